#include "calender/Calender_Set_UNT.h"

#include "calender/Calender_DM_UNT.h"
#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Doubts_unt.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/Utility_ZLM/Utility_ZLM.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int showProgressAt = 30; // milliseconds
constexpr int generationCode = 0;  // what the generating workstation locks: no stored day has this ID
} // namespace

TCalender_Set_FRM::TCalender_Set_FRM(TSoftwarePart part, bool flag, const QString &text)
    : TBaseGet_FRM(part, flag, text)
{
    SetTitle(u"تقویم کاری"_s);
    resize(820, 240);

    // In columns: the tab order runs down the first one, then down the second.
    auto *inputs = new QGridLayout;
    Title_EDT = AddInput(inputs, 0, 0, u"  &عنوان :"_s, u"Title_EDT"_s,
                         new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 50));
    Date1_EDT = AddInput(inputs, 1, 0, u"  از &تاریخ :"_s, u"Date1_EDT"_s, new TSmartDateEdit_ZLM(this));
    StartDay_CMB = AddInput(inputs, 2, 0, u"  روز &شروع :"_s, u"StartDay_CMB"_s,
                            new TSmartComboBox_ZLM(this, CalenderDays::weekdays()));
    Comment_EDT = AddInput(inputs, 0, 1, u"  ش&رح :"_s, u"Comment_EDT"_s,
                           new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 50));
    WeekEnd_CMB = AddInput(inputs, 1, 1, u"  روز تعط&یل هفته :"_s, u"WeekEnd_CMB"_s,
                           new TSmartComboBox_ZLM(this, CalenderDays::weekdays()));
    Date2_EDT = AddInput(inputs, 2, 1, u"  تا ت&اریخ :"_s, u"Date2_EDT"_s, new TSmartDateEdit_ZLM(this));
    StartDayHint_LBL = new QLabel(this);
    StartDayHint_LBL->setObjectName(u"StartDayHint_LBL"_s);
    Date2Hint_LBL = new QLabel(this);
    Date2Hint_LBL->setObjectName(u"Date2Hint_LBL"_s);
    Body()->addLayout(inputs);
    AddBeside(StartDay_CMB, StartDayHint_LBL);
    AddBeside(Date2_EDT, Date2Hint_LBL);
    Body()->addStretch(1);
    connect(Date1_EDT, &TSmartDateEdit_ZLM::changed, this, &TCalender_Set_FRM::showStartDayHint);
    connect(StartDay_CMB, &TSmartComboBox_ZLM::changed, this, &TCalender_Set_FRM::showStartDayHint);
    connect(Date2_EDT, &TSmartDateEdit_ZLM::changed, this, &TCalender_Set_FRM::showDate2Hint);

    auto *progress = new QHBoxLayout;
    Progress_PB = new QProgressBar(this);
    Progress_PB->setObjectName(u"Progress_PB"_s);
    Progress_PB->setTextVisible(false); // in a right-to-left window the style writes it white on white
    Progress_LBL = new QLabel(this);
    Progress_LBL->setObjectName(u"Progress_LBL"_s);
    Cancel_BTN = new TSmartButton_ZLM(u"توقف Esc"_s, this);
    Cancel_BTN->setObjectName(u"Cancel_BTN"_s);
    connect(Cancel_BTN, &QToolButton::clicked, this, [this] { m_stopped = true; });
    AddKey(u"Esc"_s, Cancel_BTN); // while it is shown; before the exit button, which has the same key
    progress->addWidget(Progress_LBL);
    progress->addWidget(Progress_PB, 1);
    progress->addWidget(Cancel_BTN);
    Body()->addLayout(progress);
    for (QWidget *part : std::initializer_list<QWidget *>{Progress_LBL, Progress_PB, Cancel_BTN})
        part->hide();

    KeepIn(u"Calender"_s, {{Title_EDT, "Title"}, {Comment_EDT, "Comment"}});
    BuildFooter(u"ذخیره F3"_s, u"خروج Esc"_s);
}

void TCalender_Set_FRM::ClearRecord()
{
    const QString year = NowDate().left(4);
    Title_EDT->Clear();
    Date1_EDT->SetText(year + u"/01/01"_s);
    StartDay_CMB->SetValue(0);
    Comment_EDT->Clear();
    WeekEnd_CMB->SetValue(6);
    Date2_EDT->SetText(year + u"/12/30"_s); // in every year: the user shortens it where the year is shorter
    showStartDayHint();
    showDate2Hint();
    SetIsSaved(true);
}

void TCalender_Set_FRM::showStartDayHint()
{
    const auto date = TPersianDate::parse(Date1_EDT->GetText());
    const bool differs = date && date->weekday() != StartDay_CMB->currentIndex();
    StartDayHint_LBL->setText(
        differs ? u"این تاریخ %1 است"_s.arg(CalenderDays::weekdays().at(date->weekday())) : QString());
}

void TCalender_Set_FRM::showDate2Hint()
{
    const QString note = TPersianDate::monthNote(Date2_EDT->text());
    Date2Hint_LBL->setText(note);
    Date2Hint_LBL->setVisible(!note.isEmpty()); // the date has the whole width otherwise
}

CalenderDays::Range TCalender_Set_FRM::range() const
{
    const auto from = TPersianDate::parse(Date1_EDT->GetText());
    const auto to = TPersianDate::parse(Date2_EDT->GetText());
    return {from->year,
            from->month,
            from->day,
            to->year,
            to->month,
            to->day,
            StartDay_CMB->currentIndex(),
            WeekEnd_CMB->currentIndex(),
            Title_EDT->GetText(),
            Comment_EDT->GetText()};
}

bool TCalender_Set_FRM::rangeIsFree()
{
    Calender_DM->Calender_GetWithDates(Date1_EDT->GetText(), Date2_EDT->GetText());
    if (Calender_DM->Temp_QUR->recordCount() == 0)
        return true;
    ShowSmartMessage(ntRangeHoldsDays, Date1_EDT, this, noteTime);
    FocusInput(Date1_EDT);
    return false;
}

bool TCalender_Set_FRM::Validate()
{
    if (!RequireInput(Title_EDT, u"عنوان"_s))
        return false;
    for (TSmartDateEdit_ZLM *date : {Date1_EDT, Date2_EDT}) {
        if (!date->IsDate()) {
            FocusInput(date);
            return false;
        }
    }
    const QString from = Date1_EDT->GetText();
    const QString to = Date2_EDT->GetText();
    if (!rangeIsFree())
        return false;
    if (from > to) {
        ShowSmartMessage(ntRangeReversed, Date2_EDT, this, noteTime);
        FocusInput(Date2_EDT);
        return false;
    }
    if (to.left(4).toInt() - from.left(4).toInt() >= 2) {
        ShowSmartMessage(u"بازه انتخاب تاریخ نباید بیش از یک سال باشد"_s, QString(), miWarning);
        FocusInput(Date2_EDT);
        return false;
    }
    const QStringList doubts = CalenderDays::doubts(range(), CalenderDays::of(range()));
    if (!doubts.isEmpty() && !MsgGoOnAnyway(doubts, u"آیا روزها همین گونه ساخته شوند؟"_s)) {
        FocusInput(StartDayHint_LBL->text().isEmpty() ? static_cast<QWidget *>(Date2_EDT) : StartDay_CMB);
        return false;
    }
    return true;
}

void TCalender_Set_FRM::showGenerating(bool on)
{
    m_generating = on;
    for (QWidget *input : std::initializer_list<QWidget *>{Title_EDT, Date1_EDT, StartDay_CMB, Comment_EDT,
                                                           WeekEnd_CMB, Date2_EDT, Save_BTN, EXit_BTN})
        input->setEnabled(!on);
    for (QWidget *part : std::initializer_list<QWidget *>{Progress_LBL, Progress_PB, Cancel_BTN})
        part->setVisible(on);
    if (on)
        Cancel_BTN->setFocus();
}

QString TCalender_Set_FRM::EventText() const
{
    return u"%1 ... %2"_s.arg(Date1_EDT->GetText(), Date2_EDT->GetText());
}

bool TCalender_Set_FRM::takeCalendar()
{
    if (TakeCode(generationCode))
        return true;
    QString holder;
    for (const TCodeLock &lock : ListCodeLocks())
        if (lock.part == Part() && lock.code == QString::number(generationCode))
            holder = u"ایستگاه کاری %1، کاربر %2"_s.arg(
                lock.workstation.isEmpty() ? QString::number(lock.comIndex) : lock.workstation,
                lock.userName);
    ShowSmartMessage(
        u"روزهای تقویم هم اکنون در جای دیگری ساخته می شود و تا پایان آن نمی توان روز دیگری ساخت. پس از آن دوباره ذخیره کنید."_s,
        holder, miWarning);
    return false;
}

qsizetype TCalender_Set_FRM::store(const QList<TCalenderMapper> &days)
{
    m_stopped = m_failed = false;
    qsizetype stored = 0;
    const QPointer<QWidget> focus = focusWidget();
    const auto progressText = [&](qsizetype count) {
        return count == 0
                   ? QString()
                   : u"%1 روز از %2 روز، تا %3"_s.arg(count).arg(days.size()).arg(days.at(count - 1)._Date);
    };
    Progress_LBL->setText(progressText(days.size()));
    Progress_LBL->setMinimumWidth(Progress_LBL->sizeHint().width()); // the bar does not jump
    Progress_PB->setRange(0, int(days.size()));
    Progress_PB->setValue(0);
    showGenerating(true);
    const auto back = qScopeGuard([&] {
        showGenerating(false);
        if (focus)
            focus->setFocus();
    });
    QElapsedTimer shown;
    m_failed = !Calender_DM->Calender_InsertAll(days, [&](qsizetype count) {
        stored = count;
        if (!shown.isValid() || shown.elapsed() >= showProgressAt) {
            Progress_PB->setValue(int(stored));
            Progress_LBL->setText(progressText(stored));
            QCoreApplication::processEvents();
            shown.start();
        }
        return !m_stopped;
    });
    return stored;
}

// The days that are stored stay and are told of; what is left stands in the inputs, ready to be saved.
void TCalender_Set_FRM::tellHowFar(const QList<TCalenderMapper> &days, qsizetype stored, const QString &title)
{
    const QString first = days.constFirst()._Date;
    const QString last = days.at(stored - 1)._Date;
    SetUserEvent(Part(), cpNew, u"%1 ... %2"_s.arg(first, last), false, true);
    const CalenderDays::Rest rest = CalenderDays::rest(range(), days, stored);
    Date1_EDT->SetText(rest.from);
    StartDay_CMB->SetValue(rest.startDay);
    Date2_EDT->SetText(rest.to);
    showStartDayHint();
    showDate2Hint();
    QString detail =
        u"از %1 تا %2 ثبت شده است و می ماند (%3 روز). برای ادامه، بازه %4 تا %5 در فرم گذاشته شد؛ آن را ذخیره کنید."_s
            .arg(first, last, QString::number(stored), rest.from, rest.to);
    if (!rest.laterFrom.isEmpty())
        detail += u" سپس بازه %1 تا %2 را بسازید."_s.arg(rest.laterFrom, rest.laterTo);
    ShowSmartMessage(title, detail, miInformation);
}

bool TCalender_Set_FRM::SaveRecord()
{
    const QList<TCalenderMapper> days = CalenderDays::of(range());
    if (days.isEmpty()) {
        ShowSmartMessage(
            u"هیچ روزی ساخته نشد."_s,
            u"در هر سال تنها از ماه و روز شروع تا ماه و روز پایان ساخته می شود، و پایان این بازه در سال پیش از شروع آن است. هر سال را جداگانه بسازید: نخست تا پایان سال %1، سپس از آغاز سال %2."_s
                .arg(Date1_EDT->GetText().left(4), Date2_EDT->GetText().left(4)),
            miWarning);
        FocusInput(Date2_EDT);
        return false;
    }
    try {
        // Another workstation may have stored days since the range was looked at.
        if (!takeCalendar() || !rangeIsFree())
            return false;
    } catch (const TDatabaseError &error) {
        DM.ADOConnection1->noteError(error);
        MSGFinishedNotSuccessfully(u"ذخيره سازي "_s, u"ذخيره سازي"_s);
        return false;
    }
    const qsizetype stored = store(days);
    if (stored > 0)
        m_savedOnce = true; // the list behind must show them, also after a failure or a cancel
    if (m_failed) {
        MSGFinishedNotSuccessfully(u"ذخيره سازي "_s, u"ذخيره سازي"_s);
        if (stored > 0)
            tellHowFar(days, stored, u"ساخت روزها ناتمام ماند"_s);
        return false; // the lock stays until the rest is stored or the screen is left
    }
    Guarded([this] { ReleaseCode(); });
    if (stored < days.size()) {
        tellHowFar(days, stored, u"ساخت روزها متوقف شد"_s);
        SetIsSaved(true);
        return false;
    }
    MSGCompeletedSuccessfully(u"ذخيره سازي "_s, u"%1 روز"_s.arg(stored));
    return true;
}

void TCalender_Set_FRM::reject()
{
    if (m_generating)
        m_stopped = true;
    else
        TBaseGet_FRM::reject();
}
