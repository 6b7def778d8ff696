#include "calender/Calender_Day_UNT.h"

#include "calender/Calender_DM_UNT.h"
#include "host/Declaration_PKG/Specialmessages.h"

#include <QLabel>
#include <QRadioButton>

using namespace Qt::Literals::StringLiterals;

TCalender_Day_FRM::TCalender_Day_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag)
    : TRecordGet(part, code, mode, flag)
{
    SetTitle(u"تقویم کاری"_s);
    Store.read = [](const QVariant &id, TCalenderMapper &day) {
        Calender_DM->Calender_GetByID(id, day);
        return !Calender_DM->Get_QUR->isEmpty();
    };
    Store.write = [](const TCalenderMapper &day, bool) { return Calender_DM->Calender_Update(day); };
    Store.readAgain = true;
    resize(560, 240);
    auto *inputs = new QGridLayout;
    AddFields(inputs, dayFields(), u"Calender"_s);
    auto *caption = new QLabel(u"  روز :"_s, this);
    Day_LBL = new QLabel(u"-------------"_s, this);
    Day_LBL->setObjectName(u"Day_LBL"_s);
    inputs->addWidget(caption, 0, 2);
    inputs->addWidget(Day_LBL, 0, 3);
    Body()->addLayout(inputs);

    auto *types = new QHBoxLayout;
    const TFieldInput &choice = Fields::ofColumn(dayFields(), "Type")->input;
    const auto type = [&](int position, const QString &name) {
        auto *button = new QRadioButton(choice.choices().at(position), this);
        button->setObjectName(name);
        connect(button, &QRadioButton::toggled, this, [this] { SetIsSaved(false); });
        AddTabStop(button);
        types->addWidget(button);
        return button;
    };
    WorkDay_RB = type(0, u"WorkDay_RB"_s);
    WeekEnd_RB = type(1, u"WeekEnd_RB"_s);
    Holiday_RB = type(2, u"Holiday_RB"_s);
    types->addStretch(1);
    Body()->addLayout(types);
    Body()->addStretch(1);
    BuildFooter(u"ذخیره F3"_s, u"خروج Esc"_s);
}

void TCalender_Day_FRM::ShowRecord()
{
    m_inputs.show(Stored);
    // The list's current row is this day; its names come with it.
    Day_LBL->setText(Calender_DM->List_QUR->asString(u"DayOfWeek"_s));
    QRadioButton *type = Stored._Type == 3 ? Holiday_RB : Stored._Type == 2 ? WeekEnd_RB : WorkDay_RB;
    type->setChecked(true);
    SetIsSaved(true);
}

bool TCalender_Day_FRM::Validate()
{
    return std::ranges::all_of(dayRules(), [this](const auto &rule) { return keeps(rule); });
}

bool TCalender_Day_FRM::keeps(const TRule<TDaySubject> &rule)
{
    const TDaySubject subject{dayFields(), Typed(), Stored};
    if (rule.message != TRuleMessage::WrongForm)
        return Keeps(rule, dayFields(), subject);
    if (subject.record._Date == Stored._Date || !rule.complaint(subject) || Date_EDT->IsDate())
        return true;
    FocusInput(Date_EDT);
    return false;
}

TCalenderMapper TCalender_Day_FRM::Typed() const
{
    TCalenderMapper day = TRecordGet::Typed();
    day._Type = Holiday_RB->isChecked() ? 3 : WeekEnd_RB->isChecked() ? 2 : 1;
    return day;
}
