#include "staff/StaffFamily_GetDetil_UNT.h"

#include "host/Declaration_PKG/Specialmessages.h"
#include "staff/Staff_DM_UNT.h"

#include <QLabel>
#include <QMouseEvent>

using namespace Qt::Literals::StringLiterals;

TStaffFamily_GetDetil_FRM::TStaffFamily_GetDetil_FRM(const QVariant &part, const QVariant &master)
    : TRecordGet(part, master)
{
    build();
}

TStaffFamily_GetDetil_FRM::TStaffFamily_GetDetil_FRM(const QVariant &part, const QVariant &master,
                                                     TFormMode mode, const QVariant &id)
    : TRecordGet(part, master, mode, id)
{
    build();
}

void TStaffFamily_GetDetil_FRM::build()
{
    SetTitle(u"اطلاعات خانوار کارمند"_s);
    Store.newCode = [] { return Staff_DM->Family_GetNewCode(); };
    Store.read = [](const QVariant &id, TFamilly_Mapper &member) {
        Staff_DM->Family_GetByID(id, member);
        return !Staff_DM->FamilyGet_QUR->isEmpty();
    };
    Store.write = [this](const TFamilly_Mapper &member, bool isNew) {
        const bool saved = isNew ? Staff_DM->TmpFamily_Insert(member) : Staff_DM->TmpFamily_Update(member);
        if (saved)
            SetIdentifier(member._ID);
        return saved;
    };
    SaveWords.done.clear();
    auto *inputs = AddGroup(Body(), u"اطلاعات خانوار کارمند"_s, u"Family_PNL"_s);
    AddFields(inputs, staffFamilyFields(), u"tmpStaffFamily"_s);
    Code_EDT->SetText(u"0"_s);
    Code_EDT->setEnabled(false);
    DeathDate_EDT->setEnabled(false);
    Death_CHK = AddTickBox(DeathDate_EDT, u"Death_CHK"_s);
    connect(Death_CHK, &TSmartCheckBox_ZLM::changed, this, &TStaffFamily_GetDetil_FRM::deathChanged);
    QLabel *caption = CaptionOf(DeathDate_EDT);
    caption->setObjectName(u"DeathDate_LBL"_s);
    caption->setBuddy(Death_CHK);
    caption->installEventFilter(this);
    Body()->addStretch(1);
    BuildFooter(u"ذخيره F3"_s, u"خروج Esc"_s);
    resize(460, 380);
}

bool TStaffFamily_GetDetil_FRM::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == CaptionOf(DeathDate_EDT) && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton) {
        Death_CHK->toggle();
        return true;
    }
    return TRecordGet::eventFilter(watched, event);
}

void TStaffFamily_GetDetil_FRM::deathChanged()
{
    DeathDate_EDT->Clear();
    DeathDate_EDT->setEnabled(Death_CHK->isChecked());
}

void TStaffFamily_GetDetil_FRM::ClearRecord()
{
    Stored = {};
    m_inputs.show(Stored);
    Code_EDT->SetText(Identifier().toString());
    Code_EDT->setEnabled(false);
    Death_CHK->setChecked(false);
    deathChanged();
    SetIsSaved(true);
}

// A row's code is not locked: another workstation may have entered a member of its employee under it.
QVariant TStaffFamily_GetDetil_FRM::SentRecord()
{
    TFamilly_Mapper stored;
    const bool own = Store.read(Identifier(), stored) && stored._StaffCode == Master().toInt();
    return own ? Identifier() : QVariant();
}

void TStaffFamily_GetDetil_FRM::ShowRecord()
{
    m_inputs.show(Stored);
    if (Stored._Type != familyChild)
        Type_CMB->setCurrentIndex(1);
    Death_CHK->setChecked(!Stored._DeathDate.isEmpty());
    deathChanged();
    DeathDate_EDT->SetText(Stored._DeathDate);
    SetIsSaved(true);
}

bool TStaffFamily_GetDetil_FRM::Validate()
{
    return std::ranges::all_of(staffFamilyRules(), [this](const auto &rule) { return keeps(rule); });
}

bool TStaffFamily_GetDetil_FRM::keeps(const TRule<TStaffFamilySubject> &rule)
{
    const TStaffFamilySubject subject{{staffFamilyFields(), Typed(), Stored, m_inputs.empty()}, *Staff_DM};
    if (Keeps(rule, staffFamilyFields(), subject))
        return true;
    if (rule.message == TRuleMessage::Repeated) {
        // Another workstation took the code meanwhile, and its input is not for typing: the next save has a new one.
        NewCode();
        Code_EDT->SetText(Identifier().toString());
    }
    return false;
}

TFamilly_Mapper TStaffFamily_GetDetil_FRM::Typed() const
{
    TFamilly_Mapper member = TRecordGet::Typed();
    member._StaffCode = Master().toInt();
    member._Death = Death_CHK->isChecked();
    return member;
}
