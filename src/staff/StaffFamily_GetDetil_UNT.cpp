#include "staff/StaffFamily_GetDetil_UNT.h"

#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Message_ZLM/Message_ZLM.h"
#include "staff/Staff_DM_UNT.h"

#include <QLabel>
#include <QMouseEvent>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int child = 1;
constexpr int spouse = 2;

} // namespace

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
    Store = {.newCode = [] { return Staff_DM->Family_GetNewCode(); },
             .read =
                 [](const QVariant &id, TFamilly_Mapper &) {
                     Staff_DM->Family_GetByID(id);
                     return !Staff_DM->FamilyGet_QUR->isEmpty();
                 },
             .write =
                 [this](const TFamilly_Mapper &member, bool isNew) {
                     const bool saved =
                         isNew ? Staff_DM->TmpFamily_Insert(member) : Staff_DM->TmpFamily_Update(member);
                     if (saved)
                         SetIdentifier(member._ID);
                     return saved;
                 }};
    SaveWords.done.clear();
    auto *inputs = AddGroup(Body(), u"اطلاعات خانوار کارمند"_s, u"Family_PNL"_s);
    const auto text = [&](const QString &caption, const char *name, int width) {
        return AddInput(inputs, -1, 0, caption, QString::fromLatin1(name),
                        new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, width));
    };
    const auto date = [&](const QString &caption, const char *name) {
        return AddInput(inputs, -1, 0, caption, QString::fromLatin1(name), new TSmartDateEdit_ZLM(this));
    };
    const auto choice = [&](const QString &caption, const char *name, const QStringList &items) {
        return AddInput(inputs, -1, 0, caption, QString::fromLatin1(name),
                        new TSmartComboBox_ZLM(this, items));
    };
    Code_EDT = text(u"  &کد :"_s, "Code_EDT", 15);
    Code_EDT->SetText(u"0"_s);
    Code_EDT->setEnabled(false);
    Name_EDT = text(u"  نام و نام خانواد&گی :"_s, "Name_EDT", 100);
    Sex_CMB = choice(u"  جن&سیت :"_s, "Sex_CMB", {u"مرد"_s, u"زن"_s});
    BirthDate_EDT = date(u"  تاریخ تو&لد :"_s, "BirthDate_EDT");
    Comment_EDT = text(u"  شرح& :"_s, "Comment_EDT", 50);
    Type_CMB = choice(u"  &نسبت :"_s, "Type_CMB", {u"فرزند"_s, u"همسر"_s});
    InsuranceNumber_EDT = text(u"  کد بیم&ه :"_s, "InsuranceNumber_EDT", 20);
    InsuranceNumber_EDT->SetCodeForm(TSmartEdit_ZLM::PlainCode);
    DeathDate_EDT = date(u"  تاریخ &فوت :"_s, "DeathDate_EDT");
    DeathDate_EDT->setEnabled(false);
    Death_CHK = AddTickBox(DeathDate_EDT, u"Death_CHK"_s);
    connect(Death_CHK, &TSmartCheckBox_ZLM::changed, this, &TStaffFamily_GetDetil_FRM::deathChanged);
    QLabel *caption = CaptionOf(DeathDate_EDT);
    caption->setObjectName(u"DeathDate_LBL"_s);
    caption->setBuddy(Death_CHK);
    caption->installEventFilter(this);
    KeepIn(u"tmpStaffFamily"_s,
           {{Name_EDT, "Name"}, {Comment_EDT, "Comment"}, {InsuranceNumber_EDT, "InsuranceNumber"}});
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
    Code_EDT->SetText(Identifier().toString());
    Code_EDT->setEnabled(false);
    Name_EDT->Clear();
    Comment_EDT->Clear();
    InsuranceNumber_EDT->Clear();
    Sex_CMB->setCurrentIndex(0);
    Type_CMB->setCurrentIndex(0);
    BirthDate_EDT->Clear();
    Death_CHK->setChecked(false);
    deathChanged();
    SetIsSaved(true);
}

// A row's code is not locked: another workstation may have entered a member of its employee under it.
QVariant TStaffFamily_GetDetil_FRM::SentRecord()
{
    const bool own = RecordExists() && Staff_DM->FamilyGet_QUR->asInteger("StaffCode") == Master().toInt();
    return own ? Identifier() : QVariant();
}

void TStaffFamily_GetDetil_FRM::ShowRecord()
{
    const TQuery &row = *Staff_DM->FamilyGet_QUR;
    Code_EDT->SetText(row.asString("ID"));
    Name_EDT->SetText(row.asString("Name"));
    BirthDate_EDT->SetText(row.asString("BirthDate"));
    Comment_EDT->SetText(row.asString("Comment"));
    Type_CMB->setCurrentIndex(row.asInteger("Type") == child ? 0 : 1);
    Sex_CMB->setCurrentIndex(row.asBoolean("Sex") ? 1 : 0);
    InsuranceNumber_EDT->SetText(row.asString("InsuranceNumber"));
    const QString death = row.asString("DeathDate");
    Death_CHK->setChecked(!death.isEmpty());
    deathChanged();
    DeathDate_EDT->SetText(death);
    SetIsSaved(true);
}

bool TStaffFamily_GetDetil_FRM::codeIsFree()
{
    QueryTools::open(Staff_DM->Temp_QUR,
                     TStatement("select id from tmpStaffFamily where id=").integer(Code_EDT->GetText()));
    const int loaded = Mode() == fmNew ? 0 : Identifier().toInt();
    const bool free = Staff_DM->Temp_QUR->isEmpty() || Code_EDT->GetText().toInt() == loaded;
    // One that was stored while this screen was open would let no save of the employee succeed.
    const bool stored =
        Mode() == fmNew &&
        !ScalerQuery(u"StaffFamily"_s, u"ID"_s, u"ID"_s, Code_EDT->GetText().toInt()).isEmpty();
    if (free && !stored)
        return true;
    MsgRepeatedField(u"کد"_s, u"خانواده"_s, Code_EDT, this);
    FocusInput(Code_EDT);
    // Another workstation took the code meanwhile, and this input is not for typing: the next save has a new one.
    NewCode();
    Code_EDT->SetText(Identifier().toString());
    return false;
}

bool TStaffFamily_GetDetil_FRM::deathAfterBirth()
{
    if (!Death_CHK->isChecked() || DeathDate_EDT->GetText() >= BirthDate_EDT->GetText())
        return true;
    FocusInput(DeathDate_EDT);
    ShowTooltipMessage(u"تاریخ فوت نمی تواند از تاریخ تولد کوچکتر باشد."_s, DeathDate_EDT, noteTime, 4,
                       QColor(192, 192, 192), 0, 250);
    return false;
}

bool TStaffFamily_GetDetil_FRM::Validate()
{
    return RequireInput(Code_EDT, u"کد"_s) && codeIsFree() &&
           RequireInput(Name_EDT, u"نام و نام خانوادگي"_s) && CheckInput(BirthDate_EDT) &&
           CheckInput(DeathDate_EDT) && deathAfterBirth() &&
           // Without a date the row would be read back as of a living member.
           (!Death_CHK->isChecked() || RequireInput(DeathDate_EDT, u"تاریخ فوت"_s));
}

TFamilly_Mapper TStaffFamily_GetDetil_FRM::Typed() const
{
    TFamilly_Mapper member;
    member._StaffCode = Master().toInt();
    member._ID = Code_EDT->GetText().toInt();
    member._Name = Name_EDT->GetText();
    member._BirthDate = BirthDate_EDT->GetText();
    member._Death = Death_CHK->isChecked();
    member._DeathDate = member._Death ? DeathDate_EDT->GetText() : QString();
    member._Comment = Comment_EDT->GetText();
    member._InsuranceNumber = InsuranceNumber_EDT->GetText();
    member._Type = quint16(Type_CMB->currentIndex() == 1 ? spouse : child);
    member._Sex = Sex_CMB->currentIndex() == 1;
    return member;
}
