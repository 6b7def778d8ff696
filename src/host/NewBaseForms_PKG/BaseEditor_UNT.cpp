#include "host/NewBaseForms_PKG/BaseEditor_UNT.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Utility_ZLM/PersianText.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <QTabWidget>

using namespace Qt::Literals::StringLiterals;

TBaseEditor::TBaseEditor(TFormMode mode) : m_mode(mode) {}

void TBaseEditor::SetIsSaved(bool saved)
{
    m_isSaved = saved;
}

void TBaseEditor::rollBackLeftOpen()
{
    if (DM.ADOConnection1 && DM.ADOConnection1->InTransaction())
        DM.ADOConnection1->RollbackTrans();
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
    for (qsizetype i = 1; i < m_inputs.size(); ++i)
        if (m_inputs.at(i - 1) && m_inputs.at(i))
            setTabOrder(m_inputs.at(i - 1), m_inputs.at(i));
    focusFirst();
    return TBaseForm::exec();
}

bool TBaseEditor::Start()
{
    if (m_mode == fmNew) {
        NewCode();
        m_touched = true;
        ClearRecord();
        return true;
    }
    if (!RecordExists()) {
        MsgRecordGone();
        return false;
    }
    m_touched = true;
    LoadRecord();
    ShowRecord();
    return true;
}

void TBaseEditor::focusFirst()
{
    QWidget *first = FirstInput();
    if (!first && focusWidget() && focusWidget() != this)
        return; // the screen chose already
    for (const auto &input : std::as_const(m_inputs)) {
        if (first)
            break;
        if (input && input->isEnabled() && input->isVisibleTo(this))
            first = input;
    }
    if (first)
        FocusInput(first);
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

void TBaseEditor::noteLostLine()
{
    const auto *connection = DM.ADOConnection1;
    if (connection && connection->lastError() && IsLineLost(connection->lastError()->fault()))
        m_lostSave = m_identifier;
}

// A commit whose answer never came may have stored what was typed. A new record is a stored one then: entered once more
// it would be refused, or be there twice. And a change may be the stored state: the checks that compare with the loaded
// record would take the record's own title or number for another's.
void TBaseEditor::SettleLostSave()
{
    if (!m_lostSave || *m_lostSave != m_identifier)
        return;
    if (m_mode == fmNew) {
        QVariant stored = m_identifier;
        if (stored.toInt() == 0)
            stored = StoredRow();
        else if (!RecordExists() || !StoredIsOwn())
            stored = {};
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
            finishTyping();
            m_blanks.clear();
            if (!Validate() || blanksRefused())
                return;
            if (TSmartEdit_ZLM *tooLong = m_keptTexts.Refused()) {
                FocusInput(tooLong);
                return;
            }
            if (!ReadyToSave())
                return;
            tried = true;
            // When it breaks a part of it may be stored: closing asks then, also where nothing was typed.
            SetIsSaved(false);
            saved = SaveRecord();
            if (!saved && BaseTellsFailure())
                MSGFinishedNotSuccessfully(u"ذخيره سازي "_s, u"ذخيره سازي"_s);
        });
        // Nobody else could write while it stays open, and detail rows entered from here on would go with it.
        rollBackLeftOpen();
        if (!saved)
            noteLostLine();
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
    forgetPagesFocus();
    focusFirst();
}

// A page that is turned to gives the focus to the input that had it last: in a new record that is where the record before
// ended, and what is typed for the page's first input would land there.
void TBaseEditor::forgetPagesFocus()
{
    for (const QTabWidget *pages : findChildren<QTabWidget *>())
        for (int i = 0; i < pages->count(); ++i)
            if (QWidget *last = pages->widget(i)->focusWidget(); last && !last->hasFocus())
                last->clearFocus();
}

bool TBaseEditor::confirmClose()
{
    if (m_isSaved)
        return true;
    TAnswer answer;
    {
        const QScopedValueRollback busy(m_busy, true);
        answer = MsgNotSaved();
    }
    if (answer == TAnswer::Yes)
        Save(svSaveClose); // closes by itself when it succeeds
    return answer == TAnswer::No && MayDiscard();
}

void TBaseEditor::reject()
{
    if (!m_busy && !m_finished && confirmClose())
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

void TBaseEditor::Place(QGridLayout *layout, int row, int column, const QString &caption,
                        const QString &objectName, QWidget *input, const QString &suffix)
{
    input->setObjectName(objectName);
    if (row < 0)
        row = layout->isEmpty() ? 0 : layout->rowCount();
    m_inputs.append(input);
    if (!caption.isEmpty()) {
        auto *label = new QLabel(caption, this);
        label->setObjectName(objectName + u"_Caption"_s);
        label->setBuddy(input);
        layout->addWidget(label, row, column * 2);
        m_captions.insert(input, label);
        input->setAccessibleName(QString(caption).remove(u'&').trimmed());
    }
    auto *cell = new QHBoxLayout;
    cell->addWidget(input, 1);
    if (!suffix.isEmpty()) {
        auto *label = new QLabel(suffix, this);
        label->setObjectName(objectName + u"_Suffix"_s);
        cell->addWidget(label);
    }
    layout->addLayout(cell, row, column * 2 + 1);
    // What stands in an input decides how wide its column may grow; captions keep to their text.
    layout->setColumnStretch(column * 2 + 1, 1);
}

void TBaseEditor::KeepIn(const QString &table,
                         std::initializer_list<std::pair<TSmartEdit_ZLM *, const char *>> inputsAndColumns)
{
    for (const auto &[input, column] : inputsAndColumns)
        m_keptTexts.Add(input, table, QString::fromLatin1(column));
}

TSmartCheckBox_ZLM *TBaseEditor::AddTickBox(QWidget *input, const QString &objectName)
{
    QLabel *caption = CaptionOf(input);
    auto *box = new TSmartCheckBox_ZLM({}, this);
    box->setObjectName(objectName);
    box->setAccessibleName(input->accessibleName());
    for (auto *layout : findChildren<QGridLayout *>()) {
        const int index = layout->indexOf(caption);
        if (index < 0)
            continue;
        int row = 0, column = 0, rows = 0, columns = 0;
        layout->getItemPosition(index, &row, &column, &rows, &columns);
        layout->removeWidget(caption);
        auto *cell = new QHBoxLayout;
        cell->addWidget(box);
        cell->addWidget(caption, 1);
        layout->addLayout(cell, row, column);
        break;
    }
    m_inputs.insert(m_inputs.indexOf(QPointer<QWidget>(input)), box);
    connect(box, &TSmartCheckBox_ZLM::changed, this, [this] { SetIsSaved(false); });
    return box;
}

void TBaseEditor::AddBeside(QWidget *input, QWidget *widget)
{
    for (auto *layout : findChildren<QGridLayout *>())
        for (int i = 0; i < layout->count(); ++i)
            if (auto *cell = qobject_cast<QHBoxLayout *>(layout->itemAt(i)->layout());
                cell && cell->indexOf(input) >= 0) {
                cell->addWidget(widget, 1);
                return;
            }
}

QGridLayout *TBaseEditor::AddPage(QTabWidget *pages, const QString &caption, const QString &objectName)
{
    auto *page = new QWidget;
    page->setObjectName(objectName);
    auto *outer = new QVBoxLayout(page);
    auto *grid = new QGridLayout;
    outer->addLayout(grid);
    outer->addStretch(1);
    pages->addTab(page, caption);
    return grid;
}

QGridLayout *TBaseEditor::AddGroup(QLayout *into, const QString &caption, const QString &objectName)
{
    auto *group = new QGroupBox(caption);
    group->setObjectName(objectName);
    into->addWidget(group);
    return new QGridLayout(group);
}

void TBaseEditor::GuardPage(int page, TSoftwarePart part, TPermission right)
{
    QTabWidget *pages = Pages();
    if (m_guards.isEmpty()) {
        m_lastPage = pages->currentIndex();
        connect(pages, &QTabWidget::currentChanged, this, [this, pages](int now) {
            for (const TPageGuard &guard : std::as_const(m_guards))
                if (guard.page == now && now != m_lastPage &&
                    !HavePermission(UserInfo, guard.part, guard.right, false, true, {})) {
                    pages->setCurrentIndex(m_lastPage);
                    return;
                }
            m_lastPage = now;
        });
    }
    m_guards.append({page, part, right});
}

void TBaseEditor::finishTyping()
{
    for (const auto &input : std::as_const(m_inputs))
        if (auto *edit = qobject_cast<TSmartEdit_ZLM *>(input.data()))
            edit->FinishTyping();
}

void TBaseEditor::CheckOnLeaving(TSmartEdit_ZLM *input, const std::function<void()> &check)
{
    m_leavingChecks.insert(input, {check, {}});
    connect(input, &TSmartEdit_ZLM::exited, this,
            [this, input] { Guarded([&] { runLeavingCheck(input); }); });
}

void TBaseEditor::runLeavingCheck(TSmartEdit_ZLM *input)
{
    m_leavingChecks.value(input).run();
    m_leavingChecks[input].seen = input->GetText(); // a check that failed has seen nothing
}

bool TBaseEditor::CheckTyped(TSmartEdit_ZLM *input)
{
    // Not hasFocus(): after a question it is false until the window manager has made the screen active again.
    const bool atWork = focusWidget() == input;
    if (!atWork && (!input->WasTyped() || input->GetText() == m_leavingChecks.value(input).seen))
        return false;
    runLeavingCheck(input);
    return true;
}

bool TBaseEditor::CheckInput(TSmartInput *input)
{
    // The balloon stands at the input, which may be on a page that is not shown.
    if (input->WrongNote())
        FocusInput(input->Widget());
    return input->IsValid();
}

bool TBaseEditor::RequireInput(TSmartInput *input, const QString &word)
{
    if (!input->IsEmpty()) {
        RefuseBlanks(input, word);
        return true;
    }
    MsgRequiredField(word, input->Widget(), this);
    FocusInput(input->Widget());
    return false;
}

void TBaseEditor::RefuseBlanks(TSmartInput *input, const QString &word)
{
    const auto *edit = qobject_cast<TSmartEdit_ZLM *>(input->Widget());
    if (edit && !edit->IsEmpty() && edit->WasTyped() && PersianText::isBlank(edit->GetText()))
        m_blanks.append({input, word});
}

bool TBaseEditor::blanksRefused()
{
    if (m_blanks.isEmpty())
        return false;
    QWidget *input = m_blanks.first().input->Widget();
    FocusInput(input);
    MsgRequiredField(m_blanks.first().word, input, this);
    FocusInput(input);
    return true;
}

void TBaseEditor::FocusInput(QWidget *input)
{
    for (QWidget *parent = input->parentWidget(); parent; parent = parent->parentWidget()) {
        auto *pages = qobject_cast<QTabWidget *>(parent);
        for (int i = 0; pages && i < pages->count(); ++i)
            if (pages->widget(i)->isAncestorOf(input))
                pages->setCurrentIndex(i);
    }
    input->setFocus(Qt::OtherFocusReason);
    if (auto *edit = qobject_cast<QLineEdit *>(input))
        edit->selectAll();
}
