#include "calender/Calender_Set_UNT.h"

#include "calender/CalenderDays.h"
#include "calender/Calender_DM_UNT.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Utility_ZLM/PersianCalendar.h"
#include "host/Utility_ZLM/Utility_ZLM.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>

namespace {
constexpr int rangeHoldsDays = 10060;
constexpr int rangeReversed = 10061;
constexpr int shownFor = 3000;     // milliseconds
constexpr int showProgressAt = 30; // milliseconds
} // namespace

TCalender_Set_FRM::TCalender_Set_FRM(TSoftwarePart part, bool flag, const QString &text)
    : TBaseGet_FRM(part, flag, text)
{
    SetTitle(u"تقویم کاری"_qs);
    resize(820, 240);

    // In columns: the tab order runs down the first one, then down the second.
    auto *inputs = new QGridLayout;
    Title_EDT = AddInput(inputs, 0, 0, u"  &عنوان :"_qs, u"Title_EDT"_qs,
                         new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 50));
    Date1_EDT = AddInput(inputs, 1, 0, u"  از &تاریخ :"_qs, u"Date1_EDT"_qs, new TSmartDateEdit_ZLM(this));
    StartDay_CMB = AddInput(inputs, 2, 0, u"  روز &شروع :"_qs, u"StartDay_CMB"_qs,
                            new TSmartComboBox_ZLM(this, CalenderDays::weekdays()));
    Comment_EDT = AddInput(inputs, 0, 1, u"  ش&رح :"_qs, u"Comment_EDT"_qs,
                           new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 50));
    WeekEnd_CMB = AddInput(inputs, 1, 1, u"  روز تعط&یل هفته :"_qs, u"WeekEnd_CMB"_qs,
                           new TSmartComboBox_ZLM(this, CalenderDays::weekdays()));
    Date2_EDT = AddInput(inputs, 2, 1, u"  تا ت&اریخ :"_qs, u"Date2_EDT"_qs, new TSmartDateEdit_ZLM(this));
    StartDayHint_LBL = new QLabel(this);
    StartDayHint_LBL->setObjectName(u"StartDayHint_LBL"_qs);
    Body()->addLayout(inputs);
    AddBeside(StartDay_CMB, StartDayHint_LBL);
    Body()->addStretch(1);
    connect(Date1_EDT, &TSmartDateEdit_ZLM::changed, this, &TCalender_Set_FRM::showStartDayHint);
    connect(StartDay_CMB, &TSmartComboBox_ZLM::changed, this, &TCalender_Set_FRM::showStartDayHint);

    auto *progress = new QHBoxLayout;
    Progress_PB = new QProgressBar(this);
    Progress_PB->setObjectName(u"Progress_PB"_qs);
    Progress_PB->setTextVisible(false); // in a right-to-left window the style writes it white on white
    Progress_LBL = new QLabel(this);
    Progress_LBL->setObjectName(u"Progress_LBL"_qs);
    Cancel_BTN = new TSmartButton_ZLM(u"توقف Esc"_qs, this);
    Cancel_BTN->setObjectName(u"Cancel_BTN"_qs);
    connect(Cancel_BTN, &QToolButton::clicked, this, [this] { m_stopped = true; });
    AddKey(u"Esc"_qs, Cancel_BTN); // while it is shown; before the exit button, which has the same key
    progress->addWidget(Progress_LBL);
    progress->addWidget(Progress_PB, 1);
    progress->addWidget(Cancel_BTN);
    Body()->addLayout(progress);
    for (QWidget *part : std::initializer_list<QWidget *>{Progress_LBL, Progress_PB, Cancel_BTN})
        part->hide();

    BuildFooter(u"ذخیره F3"_qs, u"خروج Esc"_qs);
}

void TCalender_Set_FRM::ClearRecord()
{
    const QString year = NowDate().left(4);
    Title_EDT->Clear();
    Date1_EDT->SetText(year + u"/01/01"_qs);
    StartDay_CMB->SetValue(0);
    Comment_EDT->Clear();
    WeekEnd_CMB->SetValue(6);
    Date2_EDT->SetText(year + u"/12/30"_qs); // in every year: the user shortens it where the year is shorter
    showStartDayHint();
    SetIsSaved(true);
}

void TCalender_Set_FRM::showStartDayHint()
{
    const auto date = TPersianDate::parse(Date1_EDT->GetText());
    const bool differs = date && date->weekday() != StartDay_CMB->currentIndex();
    StartDayHint_LBL->setText(
        differs ? u"این تاریخ %1 است"_qs.arg(CalenderDays::weekdays().at(date->weekday())) : QString());
}

bool TCalender_Set_FRM::Validate()
{
    if (!RequireInput(Title_EDT, u"عنوان"_qs))
        return false;
    for (TSmartDateEdit_ZLM *date : {Date1_EDT, Date2_EDT}) {
        if (!date->IsDate()) {
            FocusInput(date);
            return false;
        }
    }
    const QString from = Date1_EDT->GetText();
    const QString to = Date2_EDT->GetText();
    Calender_DM->Calender_GetWithDates(from, to);
    if (Calender_DM->Temp_QUR->recordCount() > 0) {
        ShowSmartMessage(rangeHoldsDays, Date1_EDT, this, shownFor);
        FocusInput(Date1_EDT);
        return false;
    }
    if (from > to) {
        ShowSmartMessage(rangeReversed, Date2_EDT, this, shownFor);
        FocusInput(Date2_EDT);
        return false;
    }
    if (to.left(4).toInt() - from.left(4).toInt() >= 2) {
        ShowSmartMessage(u"بازه انتخاب تاریخ نباید بیش از یک سال باشد"_qs, QString(), miWarning);
        FocusInput(Date2_EDT);
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
    return u"%1 ... %2"_qs.arg(Date1_EDT->GetText(), Date2_EDT->GetText());
}

bool TCalender_Set_FRM::SaveRecord()
{
    const auto from = TPersianDate::parse(Date1_EDT->GetText());
    const auto to = TPersianDate::parse(Date2_EDT->GetText());
    const QList<TCalenderMapper> days = CalenderDays::of(
        {from->year, from->month, from->day, to->year, to->month, to->day, StartDay_CMB->currentIndex(),
         WeekEnd_CMB->currentIndex(), Title_EDT->GetText(), Comment_EDT->GetText()});
    m_stopped = false;
    qsizetype stored = 0;
    bool failed = false;
    {
        const QPointer<QWidget> focus = focusWidget();
        const auto progressText = [&](qsizetype count) {
            return count == 0 ? QString()
                              : u"%1 روز از %2 روز، تا %3"_qs.arg(count)
                                    .arg(days.size())
                                    .arg(days.at(count - 1)._Date);
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
        while (stored < days.size() && !m_stopped) {
            if (!Calender_DM->Calender_Insert(days.at(stored))) {
                failed = true;
                break;
            }
            ++stored;
            if (!shown.isValid() || shown.elapsed() >= showProgressAt) {
                Progress_PB->setValue(int(stored));
                Progress_LBL->setText(progressText(stored));
                QCoreApplication::processEvents();
                shown.start();
            }
        }
    }
    // What was stored before a failure or a cancel must be in the list afterwards.
    if (stored > 0)
        m_savedOnce = true;
    if (failed) {
        MSGFinishedNotSuccessfully(u"ذخيره سازي "_qs, u"ذخيره سازي"_qs);
        return false;
    }
    if (stored < days.size()) {
        ShowSmartMessage(u"ساخت روزها متوقف شد"_qs,
                         u"تا تاریخ %1 ثبت شده است و می ماند."_qs.arg(days.at(stored - 1)._Date),
                         miInformation);
        SetIsSaved(true);
        return false;
    }
    MSGCompeletedSuccessfully(u"ذخيره سازي "_qs, u"%1 روز"_qs.arg(stored));
    return true;
}

void TCalender_Set_FRM::reject()
{
    if (m_generating)
        m_stopped = true;
    else
        TBaseGet_FRM::reject();
}
