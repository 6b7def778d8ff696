#pragma once

#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/ScriptedRecovery.h"
#include "support/TestDatabase.h"

#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "tax/TaxGet_UNT.h"
#include "tax/TaxList_UNT.h"
#include "tax/Tax_DM_UNT.h"
#include "tax/Tax_GetDetail_UNT.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

/// A bracket as a clerk types it.
struct TypedBracket {
    QString from;
    QString to;
    QString percent;
    QString comment = {};
};

/// The tax screens on a database of the test's own, worked by keys.
class TaxScreens : public testing::Test {
protected:
    TaxScreens();
    ~TaxScreens() override;

    /// A stored tax table: brackets as "from|to|percent" by lines.
    void table(int code, const QString &title, const QString &brackets = u"0|1000|0"_s);
    /// Opens the editor (code 0: a new table) and works in it.
    int edit(int code, const std::function<void(TTaxGet_FRM &)> &work);
    /// Opens the bracket screen by a key in the grid and works in it.
    void inBracket(TTaxGet_FRM &editor, Qt::Key key, Qt::KeyboardModifiers modifiers,
                   const std::function<void(TTax_GetDetail_FRM &)> &work);
    /// Adds a bracket by the keys that a clerk uses.
    void add(TTaxGet_FRM &editor, const TypedBracket &bracket);
    static void fill(TTax_GetDetail_FRM &screen, const TypedBracket &bracket);
    /// The rows of the editor's grid as shown, "from|to|percent" by lines.
    static QString shown(TTaxGet_FRM &editor);
    static TSmartGrid_ZLM *grid(TTaxGet_FRM &editor);

    QString headers() { return db.rows(u"select Code, Title, Comment from TaxMain order by Code"_s); }
    QString permanent(int code);
    QString working();
    QString locks() { return db.rows(u"select Code, Com_Index from CodeLock_TBL order by Code"_s); }

    TestDatabase db;
    ScriptedMessages messages;
    ScriptedRecovery recovery;
};

/// The editor of one tax table.
class TaxEditor : public TaxScreens {
protected:
    static void expectFocus(QWidget *input)
    {
        EXPECT_TRUE(input->hasFocus()) << input->objectName().toStdString();
    }
};
