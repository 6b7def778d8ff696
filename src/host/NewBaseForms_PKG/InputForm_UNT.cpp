#include "host/NewBaseForms_PKG/InputForm_UNT.h"

#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Utility_ZLM/PersianText.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QTabWidget>

using namespace Qt::Literals::StringLiterals;

void TInputForm::OrderTabs()
{
    for (qsizetype i = 1; i < m_inputs.size(); ++i)
        if (m_inputs.at(i - 1) && m_inputs.at(i))
            setTabOrder(m_inputs.at(i - 1), m_inputs.at(i));
}

void TInputForm::FocusFirst()
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

// A page that is turned to gives the focus to the input that had it last: in a new record that is where the record before
// ended, and what is typed for the page's first input would land there.
void TInputForm::ForgetPagesFocus()
{
    for (const QTabWidget *pages : findChildren<QTabWidget *>())
        for (int i = 0; i < pages->count(); ++i)
            if (QWidget *last = pages->widget(i)->focusWidget(); last && !last->hasFocus())
                last->clearFocus();
}

void TInputForm::Place(QGridLayout *layout, int row, int column, const QString &caption,
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

void TInputForm::KeepIn(const QString &table,
                        std::initializer_list<std::pair<TSmartEdit_ZLM *, const char *>> inputsAndColumns)
{
    for (const auto &[input, column] : inputsAndColumns)
        m_keptTexts.Add(input, table, QString::fromLatin1(column));
}

TSmartCheckBox_ZLM *TInputForm::AddTickBox(QWidget *input, const QString &objectName)
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
    connect(box, &TSmartCheckBox_ZLM::changed, this, &TInputForm::InputChanged);
    return box;
}

void TInputForm::AddBeside(QWidget *input, QWidget *widget)
{
    for (auto *layout : findChildren<QGridLayout *>())
        for (int i = 0; i < layout->count(); ++i)
            if (auto *cell = qobject_cast<QHBoxLayout *>(layout->itemAt(i)->layout());
                cell && cell->indexOf(input) >= 0) {
                cell->addWidget(widget, 1);
                return;
            }
}

QGridLayout *TInputForm::AddPage(QTabWidget *pages, const QString &caption, const QString &objectName)
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

QGridLayout *TInputForm::AddGroup(QLayout *into, const QString &caption, const QString &objectName)
{
    auto *group = new QGroupBox(caption);
    group->setObjectName(objectName);
    into->addWidget(group);
    return new QGridLayout(group);
}

void TInputForm::GuardPage(int page, TSoftwarePart part, TPermission right)
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

void TInputForm::CheckOnLeaving(TSmartEdit_ZLM *input, const std::function<void()> &check)
{
    m_leavingChecks.insert(input, {check, {}});
    connect(input, &TSmartEdit_ZLM::exited, this,
            [this, input] { Guarded([&] { runLeavingCheck(input); }); });
}

void TInputForm::runLeavingCheck(TSmartEdit_ZLM *input)
{
    m_leavingChecks.value(input).run();
    m_leavingChecks[input].seen = input->GetText(); // a check that failed has seen nothing
}

bool TInputForm::CheckTyped(TSmartEdit_ZLM *input)
{
    // Not hasFocus(): after a question it is false until the window manager has made the screen active again.
    const bool atWork = focusWidget() == input;
    if (!atWork && (!input->WasTyped() || input->GetText() == m_leavingChecks.value(input).seen))
        return false;
    runLeavingCheck(input);
    return true;
}

bool TInputForm::CheckInput(TSmartInput *input)
{
    // The balloon stands at the input, which may be on a page that is not shown.
    if (input->WrongNote())
        FocusInput(input->Widget());
    return input->IsValid();
}

bool TInputForm::RequireInput(TSmartInput *input, const QString &word)
{
    if (!input->IsEmpty()) {
        RefuseBlanks(input, word);
        return true;
    }
    MsgRequiredField(word, input->Widget(), this);
    FocusInput(input->Widget());
    return false;
}

void TInputForm::RefuseBlanks(TSmartInput *input, const QString &word)
{
    const auto *edit = qobject_cast<TSmartEdit_ZLM *>(input->Widget());
    if (edit && !edit->IsEmpty() && edit->WasTyped() && PersianText::isBlank(edit->GetText()))
        m_blanks.append({input, word});
}

void TInputForm::BeginChecks()
{
    for (const auto &input : std::as_const(m_inputs))
        if (auto *edit = qobject_cast<TSmartEdit_ZLM *>(input.data()))
            edit->FinishTyping();
    m_blanks.clear();
}

bool TInputForm::TextsMayStand()
{
    if (!m_blanks.isEmpty()) {
        QWidget *input = m_blanks.first().input->Widget();
        FocusInput(input);
        MsgRequiredField(m_blanks.first().word, input, this);
        FocusInput(input);
        return false;
    }
    TSmartEdit_ZLM *tooLong = m_keptTexts.Refused();
    if (tooLong)
        FocusInput(tooLong);
    return !tooLong;
}

void TInputForm::FocusInput(QWidget *input)
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
