#pragma once

#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/RecordRows_unt.h"
#include "host/NewBaseForms_PKG/BaseDock_UNT.h"
#include "host/NewBaseForms_PKG/BaseGetDetail_UNT.h"
#include "host/NewBaseForms_PKG/BaseGet_UNT.h"
#include "host/NewBaseForms_PKG/Recovery_UNT.h"
#include "host/database/Query.h"

#include <QTabWidget>

#include <gtest/gtest.h>

/// A small company of things: a list, an editor with two pages, a detail screen, on tables of the test's own.
class Things : public testing::Test {
protected:
    Things();
    ~Things() override;
    /// The lock rows, "code|workstation" by lines.
    QString locks();
    QString titles() { return db.rows("select Code, Title from Thing order by Code"); }

    TestDatabase db;
    ScriptedMessages messages;
};

/// Answers recovery questions from a list and keeps what was asked.
class ScriptedRecovery : public TRecoveryChooser {
public:
    ScriptedRecovery() { SetRecoveryChooser(this); }
    ~ScriptedRecovery() override { SetRecoveryChooser(nullptr); }
    TRecoveryChoice choose(const TRecoveryRequest &request, QWidget *form) override;
    QList<TRecoveryRequest> asked;
    QList<TRecoveryChoice> answers;
};

/// The working rows of a thing.
class TThingRows : public TRecordRows {
public:
    explicit TThingRows(TSoftwarePart part) : m_part(part) {}
    bool namesOneCode = false; ///< the list names the first code only, as often as there are rows

    QStringList LeftCodes(); ///< one for each row
    int Count(const QString &code) override { return int(LeftCodes().count(code)); }
    bool AreLeft(const QString &code) override;
    void TakeUp(const QString &leftCode, const QString &newCode) override;
    void Discard(const QString &code) override;
    void DiscardAll() override;

private:
    TSoftwarePart m_part;
};

class TThingGet_FRM : public TBaseGet_FRM {
    Q_OBJECT
public:
    explicit TThingGet_FRM(const QString &text = {}, TSoftwarePart part = cspCalcMethod);
    explicit TThingGet_FRM(int code, TSoftwarePart part = cspCalcMethod);

    TSmartEdit_ZLM *Code_EDT = nullptr;
    TSmartEdit_ZLM *Title_EDT = nullptr;
    TSmartComboBox_ZLM *Kind_CMB = nullptr;
    TSmartCheckBox_ZLM *Used_CHK = nullptr;
    TSmartEdit_ZLM *Comment_EDT = nullptr;
    QTabWidget *Thing_PC = nullptr;

    // What the tests turn and read.
    QStringList hooks;
    bool recovery = false;
    bool leaveTransactionOpen = false;
    bool refuseSave = false;
    QString lockedWord;

    using TBaseEditor::FocusInput;
    using TBaseEditor::GuardPage;
    using TBaseGet_FRM::Identifier;
    using TBaseGet_FRM::RecoveryTaken;
    using TBaseGet_FRM::TakeCode;

protected:
    bool Validate() override;
    void ClearRecord() override;
    void LoadRecord() override;
    void ShowRecord() override;
    bool SaveRecord() override;
    void NewCode() override;
    bool RecordExists() override;
    void BeforeClose() override;
    QString LockedEntityWord() const override { return lockedWord; }
    TRecordRows *Rows() override { return recovery ? &m_rows : nullptr; }

private:
    void build();
    TQuery m_record;
    TThingRows m_rows{Part()};

public:
    bool &namesOneCode = m_rows.namesOneCode;
};

class TThing_GetDetail_FRM : public TBaseGetDetail_FRM {
    Q_OBJECT
public:
    explicit TThing_GetDetail_FRM(int master);
    TThing_GetDetail_FRM(int master, int row);
    TSmartEdit_ZLM *Name_EDT = nullptr;

protected:
    bool Validate() override;
    void ClearRecord() override;
    void LoadRecord() override {}
    void ShowRecord() override;
    bool SaveRecord() override;
    void NewCode() override;
    bool RecordExists() override;

private:
    void build();
};

class TThingList_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    TThingList_FRM(TFormMode mode, TQuery *list);
    int SelectedCode = 0;
    bool refuseSelection = false;
    std::function<void(TThingGet_FRM *)> withEditor; ///< runs in place of showing the editor's window by hand

    using TBaseDock_FRM::Parameter;
    using TBaseDock_FRM::PrintPreview;
    using TBaseDock_FRM::RefreshList;
    using TBaseForm::ValuePart;
    using TListForm::SetListPart;

protected:
    void SetListText() override;
    TBaseGet_FRM *CreateEditor(bool newRecord) override;
    void DeleteRecord() override;
    bool SelectRecord() override;
};

/// Shows an editor, works in it once it is active, and answers how it was closed.
int open(TBaseEditor &editor, const std::function<void()> &work);
