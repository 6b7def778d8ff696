#pragma once

#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include "entity/Entity_DM_UNT.h"
#include "entity/FiscalDeducation_Get_UNT.h"
#include "entity/FiscalDeducation_List_UNT.h"
#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/Component_ZLM/AccountSelector_ZLM.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/NewBaseForms_PKG/GroupPane_UNT.h"

#include <gtest/gtest.h>

/// A small company: groups, a chart of accounts, five earnings (1 to 5), four deductions (6 to 9), orders and
/// outputs to pick into.
class EntityScreens : public testing::Test {
protected:
    EntityScreens();
    ~EntityScreens() override;

    /// Shows a screen and works in it once it has the window focus.
    int work(QDialog &screen, const std::function<void()> &work);
    /// Presses a key in a screen that opens another one, and works in that.
    void through(QWidget *screen, Qt::Key key, const std::function<void(QWidget *opened)> &work,
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Works in a new item's editor.
    int editNew(TSoftwarePart part, const QString &group,
                const std::function<void(TFiscalDeducation_Get_FRM &)> &work);
    int edit(TSoftwarePart part, int code, const std::function<void(TFiscalDeducation_Get_FRM &)> &work);
    /// Fills a new item so that it can be saved.
    void fill(TFiscalDeducation_Get_FRM &editor, const QString &title);
    /// Leaves an editor with changes that are to be lost.
    void leave(TFiscalDeducation_Get_FRM &editor);
    void chooseBasis(TFiscalDeducation_Get_FRM &editor, const QString &caption);
    /// Binds an item to the settings' fixed item of this number (1 to 17).
    void bind(int fixedItem, int userCode);
    QString earning(int code);
    QString deduction(int code);

    TestDatabase db;
    ScriptedMessages messages;
};

/// The editor of one item, new or stored.
class ItemEditor : public EntityScreens {};

/// The user is no administrator while this lives; he holds the rights given.
class Clerk {
public:
    explicit Clerk(TestDatabase &db);
    ~Clerk();
    void grant(int part, int right);

private:
    TestDatabase &m_db;
};
