// The pages of the staff editor and what stands on them.

#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/BaseFrame_PKG/Pic_Get.h"
#include "host/Component_ZLM/FileDialogs.h"
#include "staff/StaffGet_UNT.h"
#include "staff/StaffLists.h"
#include "staff/Staff_DM_UNT.h"

#include <QTabWidget>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int familyPage = 3;
constexpr int largestCode = 999'999'999; // codes go on counting from the largest one

const QList<TGridColumn> &familyColumns()
{
    static const QList<TGridColumn> columns = {
        {"Row", u"ردیف"_s, 50, true, TGridColumn::RowNumber},
        {"Name", u"نام و نام خانوادگي"_s, 130},
        {"TypeTitle", u"نسبت"_s, 70},
        {"SexTitle", u"جنسیت"_s, 60},
        {"BirthDate", u"تاریخ تولد"_s, 90, true, TGridColumn::Code},
        {"InsuranceNumber", u"کد بیمه"_s, 100, true, TGridColumn::Code},
        {"Deathtitle", u"فوت"_s, 50},
        {"DeathDate", u"تاریخ فوت"_s, 90, true, TGridColumn::Code},
        {"Comment", u"شرح"_s, 90},
    };
    return columns;
}

} // namespace

void TStaffGet_FRM::build()
{
    SetTitle(u" اطلاعات کارمندان"_s);
    Staff_PC = new QTabWidget(this);
    Staff_PC->setObjectName(u"Staff_PC"_s);
    SetPages(Staff_PC);
    buildGeneral();
    buildPersonnel();
    buildSupplementary();
    buildFamily();
    GuardPage(familyPage, cspStaff, cpStaffFamilyPage);
    Body()->addWidget(Staff_PC, 1);
    KeepIn(u"Staff"_s, {{Name_EDT, "Name"},
                        {LastName_EDT, "LastName"},
                        {FatherName_EDT, "FatherName"},
                        {BirthPlace_EDT, "BirthPlace"},
                        {IssuePlace_EDT, "IssuePlace"},
                        {PersonnelCode_EDT, "PersonnelCode"},
                        {CardNumber_EDT, "CardNumber"},
                        {Job_EDT, "Job"},
                        {Department_EDT, "Department"},
                        {BankTitle_EDT, "BankTitle"},
                        {AccountNumber_EDT, "AccountNumber"},
                        {InsuranceNumber_EDT, "InsuranceNumber"},
                        {Comment_EDT, "Comment"},
                        {JobCode_EDT, "JobCode"},
                        {JobGroup_EDT, "JobGroup"},
                        {Tel1_EDT, "Tel1"},
                        {Tel2_EDT, "Tel2"},
                        {Fax_EDT, "Fax"},
                        {Mobile_EDT, "Mob"},
                        {Major_EDT, "Major"},
                        {Addr1_EDT, "Add1"},
                        {Addr2_EDT, "Add2"},
                        {Email_EDT, "Email"},
                        {PostCode_EDT, "PostCode"},
                        {NationalCode_EDT, "NationalID"},
                        {IDNumber_EDT, "IDNumber"}});
    BuildFooter(u"ذخيره F3"_s, u"خروج Esc"_s);
    resize(900, 520);
}

void TStaffGet_FRM::buildGeneral()
{
    auto *page = AddPage(Staff_PC, u"عمومی"_s, u"ts1"_s);
    const auto text = [&](int row, int column, const QString &caption, const char *name) {
        return AddInput(page, row, column, caption, QString::fromLatin1(name), new TSmartEdit_ZLM(this));
    };
    const auto digits = [&](int row, int column, const QString &caption, const char *name,
                            TSmartMaskEdit_ZLM::Mask mask) {
        return AddInput(page, row, column, caption, QString::fromLatin1(name),
                        new TSmartMaskEdit_ZLM(this, mask, 10));
    };
    const auto date = [&](int row, int column, const QString &caption, const char *name) {
        return AddInput(page, row, column, caption, QString::fromLatin1(name), new TSmartDateEdit_ZLM(this));
    };
    const auto choice = [&](int row, int column, const QString &caption, const char *name,
                            const QStringList &items) {
        return AddInput(page, row, column, caption, QString::fromLatin1(name),
                        new TSmartComboBox_ZLM(this, items));
    };
    Code_EDT = AddInput(page, 0, 0, u"  &کد :"_s, u"Code_EDT"_s,
                        new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Integer, 15));
    Code_EDT->SetRange(0, largestCode);
    Code_EDT->SetText(u"0"_s);
    StaffGroup_CMB = choice(0, 1, u"  &گروه کارمند :"_s, "StaffGroup_CMB", {});
    Name_EDT = text(1, 0, u"  &نام :"_s, "Name_EDT");
    LastName_EDT = text(1, 1, u"  نام خانواد&گی :"_s, "LastName_EDT");
    NationalCode_EDT = digits(2, 0, u"  کد م&لی :"_s, "NationalCode_EDT", TSmartMaskEdit_ZLM::NationalCode);
    IDNumber_EDT = digits(2, 1, u"  شماره شناسنا&مه :"_s, "IDNumber_EDT", TSmartMaskEdit_ZLM::IdNumber);
    Sex_CMB = choice(3, 0, u"  &جنسیت :"_s, "Sex_CMB", {u"مرد"_s, u"زن"_s});
    FatherName_EDT = text(3, 1, u"  نام پد&ر :"_s, "FatherName_EDT");
    BirthPlace_EDT = text(4, 0, u"  محل &تولد :"_s, "BirthPlace_EDT");
    BirthDate_EDT = date(4, 1, u"  تاریخ ت&ولد :"_s, "BirthDate_EDT");
    IssuePlace_EDT = text(5, 0, u"  محل &صدور :"_s, "IssuePlace_EDT");
    IssueDate_EDT = date(5, 1, u"  تاریخ ص&دور :"_s, "IssueDate_EDT");
    IsMarried_CMB = choice(6, 0, u"  و&ضعیت تاهل :"_s, "IsMarried_CMB", {u"مجرد"_s, u"متاهل"_s});
    connect(Code_EDT, &TSmartEdit_ZLM::exited, this, [this] { Guarded([this] { codeLeft(); }); });
    connect(IsMarried_CMB, &TSmartComboBox_ZLM::changed, this, &TStaffGet_FRM::marriedChanged);

    const auto picture = [&](const QString &caption, const char *name) {
        auto *made = new TPic_Get(caption, this);
        made->setObjectName(QString::fromLatin1(name));
        made->SetDialog([this] { return pictureDialog(); });
        AddTabStop(made);
        connect(made, &TPic_Get::changed, this, [this] { SetIsSaved(false); });
        return made;
    };
    Picture_Get = picture(u"عکس"_s, "Picture_Get");
    FingerPrint_Get = picture(u"اثر انگشت"_s, "FingerPrint_Get");
    auto *pictures = new QHBoxLayout;
    pictures->addWidget(Picture_Get);
    pictures->addWidget(FingerPrint_Get);
    page->addLayout(pictures, 0, 4, 7, 1);
    connect(Picture_Get->PicInsert_BTN, &QAbstractButton::clicked, this,
            &TStaffGet_FRM::Picture_GetPicInsert_BTNClick);
    connect(Picture_Get->PicDelete_BTN, &QAbstractButton::clicked, this,
            &TStaffGet_FRM::Picture_GetPicDelete_BTNClick);
    connect(FingerPrint_Get->PicInsert_BTN, &QAbstractButton::clicked, this,
            &TStaffGet_FRM::FingerPrint_GetPicInsert_BTNClick);
    connect(FingerPrint_Get->PicDelete_BTN, &QAbstractButton::clicked, this,
            &TStaffGet_FRM::FingerPrint_GetPicDelete_BTNClick);
}

QFileDialog *TStaffGet_FRM::pictureDialog()
{
    if (OpenPictureDialog)
        return OpenPictureDialog;
    OpenPictureDialog =
        FileDialogs::Make(this, u"انتخاب تصویر"_s, u"تصویر (*.jpg *.jpeg *.png)"_s, QFileDialog::AcceptOpen);
    OpenPictureDialog->setObjectName(u"OpenPictureDialog"_s);
    OpenPictureDialog->setLabelText(QFileDialog::LookIn, u"پوشه :"_s);
    OpenPictureDialog->setLabelText(QFileDialog::FileName, u"نام فایل :"_s);
    OpenPictureDialog->setLabelText(QFileDialog::FileType, u"نوع فایل :"_s);
    OpenPictureDialog->setLabelText(QFileDialog::Accept, u"انتخاب"_s);
    OpenPictureDialog->setLabelText(QFileDialog::Reject, u"انصراف"_s);
    return OpenPictureDialog;
}

void TStaffGet_FRM::buildPersonnel()
{
    auto *page = AddPage(Staff_PC, u"پرسنلی"_s, u"ts2"_s);
    const auto text = [&](int row, int column, const QString &caption, const char *name, int length) {
        return AddInput(page, row, column, caption, QString::fromLatin1(name),
                        new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, length));
    };
    const auto choice = [&](int row, int column, const QString &caption, const char *name,
                            const QStringList &items) {
        auto *input = AddInput(page, row, column, caption, QString::fromLatin1(name),
                               new TSmartComboBox_ZLM(this, items));
        // The longest item may be wider than the screen.
        input->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        input->setMinimumContentsLength(16);
        return input;
    };
    CoDate_EDT = AddInput(page, 0, 0, u"  تاری&خ استخدام :"_s, u"CoDate_EDT"_s, new TSmartDateEdit_ZLM(this));
    LeaveDate_EDT =
        AddInput(page, 0, 1, u"  تاریخ &ترک کار :"_s, u"LeaveDate_EDT"_s, new TSmartDateEdit_ZLM(this));
    LeaveDate_CHK = AddTickBox(LeaveDate_EDT, u"LeaveDate_CHK"_s);
    LeaveDate_LBL = CaptionOf(LeaveDate_EDT);
    LeaveDate_LBL->setObjectName(u"LeaveDate_LBL"_s);
    EmploymentTitle_CMB = choice(1, 0, u"  استخدام :"_s, "EmploymentTitle_CMB", StaffLists::employments());
    Category_CMB = choice(1, 1, u"  رسته :"_s, "Category_CMB", StaffLists::categories());
    FiscalExemption_CMB =
        choice(2, 0, u"  معافیت مالی :"_s, "FiscalExemption_CMB", StaffLists::fiscalExemptions());
    National_CMB = choice(2, 1, u"  ملیت :"_s, "National_CMB", {u"ایرانی"_s, u"غیر ایرانی"_s});
    PersonnelCode_EDT = text(3, 0, u"  کد پرس&نلی :"_s, "PersonnelCode_EDT", 15);
    CardNumber_EDT = text(3, 1, u"  شماره ک&ارت :"_s, "CardNumber_EDT", 20);
    Job_EDT = text(4, 0, u"  ش&غل :"_s, "Job_EDT", 50);
    Department_EDT = text(4, 1, u"  م&حل خدمت :"_s, "Department_EDT", 50);
    BankTitle_EDT = text(5, 0, u"  &عنوان بانک :"_s, "BankTitle_EDT", 50);
    AccountNumber_EDT = text(5, 1, u"  شماره ح&ساب :"_s, "AccountNumber_EDT", 30);
    Insurance_CMB = choice(6, 0, u"  بیمه :"_s, "Insurance_CMB", StaffLists::insurers());
    InsuranceNumber_EDT = text(6, 1, u"  کد &بیمه :"_s, "InsuranceNumber_EDT", 10);
    Comment_EDT = text(7, 0, u"  &شرح :"_s, "Comment_EDT", 50);
    JobCode_EDT = text(7, 1, u"  کد شغ&ل :"_s, "JobCode_EDT", 6);
    JobGroup_EDT = text(8, 1, u"  &گروه شغل :"_s, "JobGroup_EDT", 50);
    for (TSmartEdit_ZLM *number :
         {PersonnelCode_EDT, CardNumber_EDT, AccountNumber_EDT, InsuranceNumber_EDT, JobCode_EDT})
        number->SetCodeForm(TSmartEdit_ZLM::PlainCode);
    PersonnelCode_EDT->SetText(u"0"_s);
    InsuranceNumber_EDT->SetText(u"0"_s);
    connect(LeaveDate_CHK, &TSmartCheckBox_ZLM::changed, this, &TStaffGet_FRM::leaveDateChanged);
}

void TStaffGet_FRM::buildSupplementary()
{
    auto *page = AddPage(Staff_PC, u"تکمیلی"_s, u"ts3"_s);
    const auto text = [&](int row, int column, const QString &caption, const char *name, int length) {
        return AddInput(page, row, column, caption, QString::fromLatin1(name),
                        new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, length));
    };
    const auto masked = [&](int row, int column, const QString &caption, const char *name,
                            TSmartMaskEdit_ZLM::Mask mask, int length) {
        return AddInput(page, row, column, caption, QString::fromLatin1(name),
                        new TSmartMaskEdit_ZLM(this, mask, length));
    };
    const auto choice = [&](int row, int column, const QString &caption, const char *name,
                            const QStringList &items) {
        return AddInput(page, row, column, caption, QString::fromLatin1(name),
                        new TSmartComboBox_ZLM(this, items));
    };
    Tel1_EDT = masked(0, 0, u"  ت&لفن1 :"_s, "Tel1_EDT", TSmartMaskEdit_ZLM::Telephone, 15);
    PostCode_EDT = masked(0, 1, u"  کد پستی :"_s, "PostCode_EDT", TSmartMaskEdit_ZLM::PostCode, 10);
    Tel2_EDT = masked(1, 0, u"  &تلفن2 :"_s, "Tel2_EDT", TSmartMaskEdit_ZLM::Telephone, 15);
    Degree_CMB = choice(1, 1, u"  م&درک تحصیلی :"_s, "Degree_CMB", StaffLists::degrees());
    Fax_EDT = text(2, 0, u"  فاکس& :"_s, "Fax_EDT", 50);
    Military_CMB = choice(2, 1, u"  وضعیت ن&ظام وظیفه :"_s, "Military_CMB", StaffLists::militaryStates());
    Mobile_EDT = text(3, 0, u"  موبایل& :"_s, "Mobile_EDT", 50);
    Major_EDT = text(3, 1, u"  رشته تح&صیلی :"_s, "Major_EDT", 50);
    Addr1_EDT = text(4, 0, u"  آدر&س1 :"_s, "Addr1_EDT", 300);
    Email_EDT = masked(4, 1, u"  پست الکترونی&کی :"_s, "Email_EDT", TSmartMaskEdit_ZLM::Email, 50);
    Addr2_EDT = text(5, 0, u"  آد&رس2 :"_s, "Addr2_EDT", 300);
    for (TSmartEdit_ZLM *number : {Fax_EDT, Mobile_EDT})
        number->SetCodeForm(TSmartEdit_ZLM::PlainCode);
}

void TStaffGet_FRM::buildFamily()
{
    auto *page = new QWidget;
    page->setObjectName(u"ts4"_s);
    auto *column = new QVBoxLayout(page);
    m_family = new TDetail_Rows_Frame(page, u"FamilyDB_List_TableView"_s,
                                      {u"سطر جدید"_s, u"ویرایش سطر"_s, u"حذف سطر"_s},
                                      {"NewRow_BTN", "EditRow_BTN", "DelRow_BTN"}, false);
    m_family->SetColumns(Staff_DM->Family_QUR, familyColumns());
    column->addWidget(m_family);
    Staff_PC->addTab(page, u"خانواده"_s);
    AddTabStop(m_family->Grid());
    connect(m_family, &TDetail_Rows_Frame::addRow, this, &TStaffGet_FRM::addRow);
    connect(m_family, &TDetail_Rows_Frame::editRow, this, &TStaffGet_FRM::editRow);
    connect(m_family, &TDetail_Rows_Frame::deleteRow, this, &TStaffGet_FRM::deleteRow);
}
