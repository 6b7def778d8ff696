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
    Date_EDT = AddInput(inputs, 0, 0, u"  تار&یخ :"_s, u"Date_EDT"_s, new TSmartDateEdit_ZLM(this));
    auto *caption = new QLabel(u"  روز :"_s, this);
    Day_LBL = new QLabel(u"-------------"_s, this);
    Day_LBL->setObjectName(u"Day_LBL"_s);
    inputs->addWidget(caption, 0, 2);
    inputs->addWidget(Day_LBL, 0, 3);
    Title_EDT = AddInput(inputs, 1, 0, u"  &عنوان :"_s, u"Title_EDT"_s,
                         new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 50));
    Comment_EDT = AddInput(inputs, 2, 0, u"  &شرح :"_s, u"Comment_EDT"_s,
                           new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 50));
    Body()->addLayout(inputs);

    auto *types = new QHBoxLayout;
    const auto type = [&](const QString &text, const QString &name) {
        auto *button = new QRadioButton(text, this);
        button->setObjectName(name);
        connect(button, &QRadioButton::toggled, this, [this] { SetIsSaved(false); });
        AddTabStop(button);
        types->addWidget(button);
        return button;
    };
    WorkDay_RB = type(u"روز&کاری"_s, u"WorkDay_RB"_s);
    WeekEnd_RB = type(u"روز تع&طیل هفته"_s, u"WeekEnd_RB"_s);
    Holiday_RB = type(u"تعطیل ر&سمی"_s, u"Holiday_RB"_s);
    types->addStretch(1);
    Body()->addLayout(types);
    Body()->addStretch(1);
    KeepIn(u"Calender"_s, {{Title_EDT, "Title"}, {Comment_EDT, "Comment"}});
    BuildFooter(u"ذخیره F3"_s, u"خروج Esc"_s);
}

void TCalender_Day_FRM::ShowRecord()
{
    Date_EDT->SetText(Stored._Date);
    // The list's current row is this day; its names come with it.
    Day_LBL->setText(Calender_DM->List_QUR->asString(u"DayOfWeek"_s));
    Title_EDT->SetText(Stored._Title);
    Comment_EDT->SetText(Stored._Comment);
    QRadioButton *type = Stored._Type == 3 ? Holiday_RB : Stored._Type == 2 ? WeekEnd_RB : WorkDay_RB;
    type->setChecked(true);
    SetIsSaved(true);
}

bool TCalender_Day_FRM::Validate()
{
    if (!RequireInput(Title_EDT, u"عنوان"_s))
        return false;
    // A stored day keeps its date, also one that the calendar does not have (12/30 of a common year).
    if (Date_EDT->GetText() != Stored._Date && !Date_EDT->IsDate()) {
        FocusInput(Date_EDT);
        return false;
    }
    return true;
}

TCalenderMapper TCalender_Day_FRM::Typed() const
{
    TCalenderMapper day = Stored;
    day._Title = Title_EDT->GetText();
    day._Comment = Comment_EDT->GetText();
    day._Type = Holiday_RB->isChecked() ? 3 : WeekEnd_RB->isChecked() ? 2 : 1;
    return day;
}
