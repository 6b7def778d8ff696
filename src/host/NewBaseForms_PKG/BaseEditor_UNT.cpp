#include "host/NewBaseForms_PKG/BaseEditor_UNT.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Specialmessages.h"

#include <QScopedValueRollback>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Nobody else could write while it stays open, and detail rows entered from here on would go with it.
void rollBackLeftOpen()
{
    if (DM.ADOConnection1 && DM.ADOConnection1->InTransaction())
        DM.ADOConnection1->RollbackTrans();
}

} // namespace

TBaseEditor::TBaseEditor(TFormMode mode) : m_mode(mode) {}

void TBaseEditor::SetIsSaved(bool saved)
{
    m_isSaved = saved;
}

int TBaseEditor::exec()
{
    m_finished = false;
    bool started = false;
    const bool sound = Guarded([&] { started = Start(); });
    if (!sound || !started) {
        rollBackLeftOpen();
        Guarded([this] { ReleaseHeld(); });
        leaveRecord();
        return Rejected;
    }
    SetIsSaved(!OpensUnsaved());
    OrderTabs();
    FocusFirst();
    return TBaseForm::exec();
}

void TBaseEditor::AllotCode(const std::function<int()> &newCode)
{
    SetIdentifier(newCode());
}

bool TBaseEditor::HoldRecord()
{
    if (m_mode == fmNew)
        NewCode();
    return true;
}

bool TBaseEditor::Start()
{
    const bool stored = m_mode != fmNew;
    if (stored && !RecordExists()) {
        MsgRecordGone();
        return false;
    }
    if (!HoldRecord())
        return false;
    m_touched = true;
    if (stored) {
        LoadRecord();
        ShowRecord();
    } else {
        ClearRecord();
    }
    return true;
}

void TBaseEditor::leaveRecord()
{
    if (!m_touched)
        return;
    m_touched = false;
    Guarded([this] {
        try {
            BeforeClose();
        } catch (const TDatabaseError &error) {
            CloseFailed(error);
            throw;
        }
    });
}

QVariant TBaseEditor::SentRecord()
{
    return m_identifier.toInt() != 0 && RecordExists() ? m_identifier : QVariant();
}

bool TBaseEditor::Written(const std::function<bool()> &write)
{
    try {
        return write();
    } catch (const TDatabaseError &error) {
        DM.ADOConnection1->noteError(error); // the message tells its reason
        return false;
    }
}

// A commit whose answer never came may have stored what was typed. A new record is a stored one then: entered once more
// it would be refused, or be there twice. And a change may be the stored state: the checks that compare with the loaded
// record would take the record's own title or number for another's.
void TBaseEditor::SettleLostSave()
{
    if (!m_lostSave || *m_lostSave != m_identifier)
        return;
    if (m_mode == fmNew) {
        const QVariant stored = SentRecord();
        if (stored.isNull())
            return;
        SetIdentifier(stored);
        SetMode(fmEdit);
        m_savedOnce = true;
        m_savedIdentifier = Identifier();
    } else if (!RecordExists()) {
        return;
    }
    LoadRecord();
}

bool TBaseEditor::Save(TSaveMode way)
{
    if (m_busy || m_finished)
        return false;
    bool saved = false;
    bool tried = false;
    {
        const QScopedValueRollback busy(m_busy, true);
        if (DM.ADOConnection1)
            DM.ADOConnection1->clearLastError();
        const bool sound = Guarded([&] {
            SettleLostSave();
            BeginChecks();
            if (!Validate() || !TextsMayStand() || !ReadyToSave())
                return;
            tried = true;
            // When it breaks a part of it may be stored: closing asks then, also where nothing was typed.
            SetIsSaved(false);
            saved = SaveRecord();
        });
        rollBackLeftOpen();
        const auto *connection = DM.ADOConnection1;
        if (!saved && connection && connection->lastError() && IsLineLost(connection->lastError()->fault()))
            m_lostSave = m_identifier;
        if (tried && !saved)
            Guarded([this] { SaveFailed(); });
        if (!sound || !saved)
            return false;
        RecordSaved(m_mode == fmNew);
        m_lostSave.reset();
        m_savedOnce = true;
        m_savedIdentifier = Identifier();
        SetIsSaved(true);
    }
    if (way == svSaveClose)
        done(Accepted);
    else if (way == svSaveNew)
        startNext();
    else
        stay();
    return true;
}

void TBaseEditor::stay()
{
    SetMode(fmEdit);
    const QPointer<QWidget> focus = focusWidget();
    const bool sound = Guarded([this] {
        if (!RecordExists())
            return;
        leaveRecord();
        m_touched = true;
        LoadRecord();
        ShowRecord();
    });
    SetIsSaved(true);
    // What is shown is stored; working rows that could not be read back must not be saved over the stored ones.
    if (!sound)
        done(Accepted);
    else if (focus && focus->isEnabled() && focus->isVisible())
        focus->setFocus();
}

void TBaseEditor::startNext()
{
    if (!MayStartNew()) {
        done(Accepted);
        return;
    }
    leaveRecord();
    bool started = false;
    SetMode(fmNew);
    if (QWidget *focus = focusWidget())
        focus->clearFocus(); // the new record's hooks may choose where to begin
    const bool sound = Guarded([&] {
        ReleaseHeld();
        started = Start();
    });
    if (!sound || !started) {
        done(Accepted);
        return;
    }
    SetIsSaved(true);
    ForgetPagesFocus();
    FocusFirst();
}

void TBaseEditor::reject()
{
    if (m_busy || m_finished)
        return;
    TAnswer discard = TAnswer::No;
    if (!m_isSaved) {
        const QScopedValueRollback busy(m_busy, true);
        discard = MsgNotSaved();
    }
    if (discard == TAnswer::Yes)
        Save(svSaveClose); // closes by itself when it succeeds
    else if (discard == TAnswer::No && (m_isSaved || MayDiscard()))
        done(m_savedOnce ? Accepted : Rejected);
}

void TBaseEditor::done(int result)
{
    if (m_finished)
        return;
    m_finished = true;
    rollBackLeftOpen();
    try {
        if (m_mode == fmNew)
            SettleLostSave(); // the list behind must show what is stored
    } catch (const TDatabaseError &) {
        // The save told about the line already.
    }
    Guarded([this] { ReleaseHeld(); });
    leaveRecord();
    TBaseForm::done(m_savedOnce ? int(Accepted) : result);
}

bool TBaseEditor::HandleKey(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F3 && Save_BTN && Save_BTN->SaveMode() != svNone) {
        const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
        if (modifiers == Qt::ShiftModifier || modifiers == Qt::ControlModifier) {
            if (Save_BTN->isEnabled() && !event->isAutoRepeat())
                Save(modifiers == Qt::ShiftModifier ? svSave : svSaveNew);
            return true;
        }
    }
    return TBaseForm::HandleKey(event);
}

void TBaseEditor::BuildFooter(const QString &saveCaption, const QString &exitCaption, TSaveMode way)
{
    Save_BTN = AddButton(u"Save_BTN"_s, saveCaption, u"F3"_s);
    Save_BTN->SetSaveMode(way);
    connect(Save_BTN, &QAbstractButton::clicked, this, [this] { Save(Save_BTN->SaveMode()); });
    connect(Save_BTN, &TSmartButton_ZLM::saveRequested, this, [this](TSaveMode mode) { Save(mode); });
    EXit_BTN = AddButton(u"EXit_BTN"_s, exitCaption, u"Esc"_s);
    connect(EXit_BTN, &QAbstractButton::clicked, this, &TBaseEditor::reject);
}
