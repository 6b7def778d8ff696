// The pages of the staff editor and what stands on them.

#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/BaseFrame_PKG/Pic_Get.h"
#include "host/Component_ZLM/FileDialogs.h"
#include "staff/StaffGet_UNT.h"
#include "staff/StaffLists.h"
#include "staff/Staff_DM_UNT.h"

#include <QTabWidget>

namespace {

constexpr int familyPage = 3;
constexpr int largestCode = 999'999'999; // codes go on counting from the largest one

const QList<TGridColumn> &familyColumns()
{
    static const QList<TGridColumn> columns = {
        {"Row", u"ردیف"_qs, 50, true, TGridColumn::RowNumber},
        {"Name", u"نام و نام خانوادگي"_qs, 130},
        {"TypeTitle", u"نسبت"_qs, 70},
        {"SexTitle", u"جنسیت"_qs, 60},
        {"BirthDate", u"تاریخ تولد"_qs, 90, true, TGridColumn::Code},
        {"InsuranceNumber", u"کد بیمه"_qs, 100, true, TGridColumn::Code},
        {"Deathtitle", u"فوت"_qs, 50},
        {"DeathDate", u"تاریخ فوت"_qs, 90, true, TGridColumn::Code},
        {"Comment", u"شرح"_qs, 90},
    };
    return columns;
}

} // namespace

void TStaffGet_FRM::build()
{
    SetTitle(u" اطلاعات کارمندان"_qs);
    Staff_PC = new QTabWidget(this);
    Staff_PC->setObjectName(QStringLiteral("Staff_PC"));
    SetPages(Staff_PC);
    buildGeneral();
    buildPersonnel();
    buildSupplementary();
    buildFamily();
    GuardPage(familyPage, cspStaff, cpStaffFamilyPage);
    Body()->addWidget(Staff_PC, 1);
    KeepIn(QStringLiteral("Staff"), {{Name_EDT, "Name"},
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
    BuildFooter(u"ذخيره F3"_qs, u"خروج Esc"_qs);
    resize(900, 520);
}

void TStaffGet_FRM::buildGeneral()
{
    auto *page = AddPage(Staff_PC, u"عمومی"_qs, QStringLiteral("ts1"));
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
    Code_EDT = AddInput(page, 0, 0, u"  &کد :"_qs, QStringLiteral("Code_EDT"),
                        new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Integer, 15));
    Code_EDT->SetRange(0, largestCode);
    Code_EDT->SetText(QStringLiteral("0"));
    StaffGroup_CMB = choice(0, 1, u"  &گروه کارمند :"_qs, "StaffGroup_CMB", {});
    Name_EDT = text(1, 0, u"  &نام :"_qs, "Name_EDT");
    LastName_EDT = text(1, 1, u"  نام خانواد&گی :"_qs, "LastName_EDT");
    NationalCode_EDT = digits(2, 0, u"  کد م&لی :"_qs, "NationalCode_EDT", TSmartMaskEdit_ZLM::NationalCode);
    IDNumber_EDT = digits(2, 1, u"  شماره شناسنا&مه :"_qs, "IDNumber_EDT", TSmartMaskEdit_ZLM::IdNumber);
    Sex_CMB = choice(3, 0, u"  &جنسیت :"_qs, "Sex_CMB", {u"مرد"_qs, u"زن"_qs});
    FatherName_EDT = text(3, 1, u"  نام پد&ر :"_qs, "FatherName_EDT");
    BirthPlace_EDT = text(4, 0, u"  محل &تولد :"_qs, "BirthPlace_EDT");
    BirthDate_EDT = date(4, 1, u"  تاریخ ت&ولد :"_qs, "BirthDate_EDT");
    IssuePlace_EDT = text(5, 0, u"  محل &صدور :"_qs, "IssuePlace_EDT");
    IssueDate_EDT = date(5, 1, u"  تاریخ ص&دور :"_qs, "IssueDate_EDT");
    IsMarried_CMB = choice(6, 0, u"  و&ضعیت تاهل :"_qs, "IsMarried_CMB", {u"مجرد"_qs, u"متاهل"_qs});
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
    Picture_Get = picture(u"عکس"_qs, "Picture_Get");
    FingerPrint_Get = picture(u"اثر انگشت"_qs, "FingerPrint_Get");
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
    OpenPictureDialog = FileDialogs::Make(this, u"انتخاب تصویر"_qs, u"تصویر (*.jpg *.jpeg *.png)"_qs,
                                          QFileDialog::AcceptOpen);
    OpenPictureDialog->setObjectName(QStringLiteral("OpenPictureDialog"));
    OpenPictureDialog->setLabelText(QFileDialog::LookIn, u"پوشه :"_qs);
    OpenPictureDialog->setLabelText(QFileDialog::FileName, u"نام فایل :"_qs);
    OpenPictureDialog->setLabelText(QFileDialog::FileType, u"نوع فایل :"_qs);
    OpenPictureDialog->setLabelText(QFileDialog::Accept, u"انتخاب"_qs);
    OpenPictureDialog->setLabelText(QFileDialog::Reject, u"انصراف"_qs);
    return OpenPictureDialog;
}

void TStaffGet_FRM::buildPersonnel()
{
    auto *page = AddPage(Staff_PC, u"پرسنلی"_qs, QStringLiteral("ts2"));
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
    CoDate_EDT = AddInput(page, 0, 0, u"  تاری&خ استخدام :"_qs, QStringLiteral("CoDate_EDT"),
                          new TSmartDateEdit_ZLM(this));
    LeaveDate_EDT = AddInput(page, 0, 1, u"  تاریخ &ترک کار :"_qs, QStringLiteral("LeaveDate_EDT"),
                             new TSmartDateEdit_ZLM(this));
    LeaveDate_CHK = AddTickBox(LeaveDate_EDT, QStringLiteral("LeaveDate_CHK"));
    LeaveDate_LBL = CaptionOf(LeaveDate_EDT);
    LeaveDate_LBL->setObjectName(QStringLiteral("LeaveDate_LBL"));
    EmploymentTitle_CMB = choice(1, 0, u"  استخدام :"_qs, "EmploymentTitle_CMB", StaffLists::employments());
    Category_CMB = choice(1, 1, u"  رسته :"_qs, "Category_CMB", StaffLists::categories());
    FiscalExemption_CMB =
        choice(2, 0, u"  معافیت مالی :"_qs, "FiscalExemption_CMB", StaffLists::fiscalExemptions());
    National_CMB = choice(2, 1, u"  ملیت :"_qs, "National_CMB", {u"ایرانی"_qs, u"غیر ایرانی"_qs});
    PersonnelCode_EDT = text(3, 0, u"  کد پرس&نلی :"_qs, "PersonnelCode_EDT", 15);
    CardNumber_EDT = text(3, 1, u"  شماره ک&ارت :"_qs, "CardNumber_EDT", 20);
    Job_EDT = text(4, 0, u"  ش&غل :"_qs, "Job_EDT", 50);
    Department_EDT = text(4, 1, u"  م&حل خدمت :"_qs, "Department_EDT", 50);
    BankTitle_EDT = text(5, 0, u"  &عنوان بانک :"_qs, "BankTitle_EDT", 50);
    AccountNumber_EDT = text(5, 1, u"  شماره ح&ساب :"_qs, "AccountNumber_EDT", 30);
    Insurance_CMB = choice(6, 0, u"  بیمه :"_qs, "Insurance_CMB", StaffLists::insurers());
    InsuranceNumber_EDT = text(6, 1, u"  کد &بیمه :"_qs, "InsuranceNumber_EDT", 10);
    Comment_EDT = text(7, 0, u"  &شرح :"_qs, "Comment_EDT", 50);
    JobCode_EDT = text(7, 1, u"  کد شغ&ل :"_qs, "JobCode_EDT", 6);
    JobGroup_EDT = text(8, 1, u"  &گروه شغل :"_qs, "JobGroup_EDT", 50);
    PersonnelCode_EDT->SetText(QStringLiteral("0"));
    InsuranceNumber_EDT->SetText(QStringLiteral("0"));
    connect(LeaveDate_CHK, &TSmartCheckBox_ZLM::changed, this, &TStaffGet_FRM::leaveDateChanged);
}

void TStaffGet_FRM::buildSupplementary()
{
    auto *page = AddPage(Staff_PC, u"تکمیلی"_qs, QStringLiteral("ts3"));
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
    Tel1_EDT = masked(0, 0, u"  ت&لفن1 :"_qs, "Tel1_EDT", TSmartMaskEdit_ZLM::Telephone, 15);
    PostCode_EDT = masked(0, 1, u"  کد پستی :"_qs, "PostCode_EDT", TSmartMaskEdit_ZLM::PostCode, 10);
    Tel2_EDT = masked(1, 0, u"  &تلفن2 :"_qs, "Tel2_EDT", TSmartMaskEdit_ZLM::Telephone, 15);
    Degree_CMB = choice(1, 1, u"  م&درک تحصیلی :"_qs, "Degree_CMB", StaffLists::degrees());
    Fax_EDT = text(2, 0, u"  فاکس& :"_qs, "Fax_EDT", 50);
    Military_CMB = choice(2, 1, u"  وضعیت ن&ظام وظیفه :"_qs, "Military_CMB", StaffLists::militaryStates());
    Mobile_EDT = text(3, 0, u"  موبایل& :"_qs, "Mobile_EDT", 50);
    Major_EDT = text(3, 1, u"  رشته تح&صیلی :"_qs, "Major_EDT", 50);
    Addr1_EDT = text(4, 0, u"  آدر&س1 :"_qs, "Addr1_EDT", 300);
    Email_EDT = masked(4, 1, u"  پست الکترونی&کی :"_qs, "Email_EDT", TSmartMaskEdit_ZLM::Email, 50);
    Addr2_EDT = text(5, 0, u"  آد&رس2 :"_qs, "Addr2_EDT", 300);
}

void TStaffGet_FRM::buildFamily()
{
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("ts4"));
    auto *column = new QVBoxLayout(page);
    m_family = new TDetail_Rows_Frame(page, QStringLiteral("FamilyDB_List_TableView"),
                                      {u"سطر جدید"_qs, u"ویرایش سطر"_qs, u"حذف سطر"_qs},
                                      {"NewRow_BTN", "EditRow_BTN", "DelRow_BTN"}, false);
    m_family->SetColumns(Staff_DM->Family_QUR, familyColumns());
    column->addWidget(m_family);
    Staff_PC->addTab(page, u"خانواده"_qs);
    AddTabStop(m_family->Grid());
    connect(m_family, &TDetail_Rows_Frame::addRow, this, &TStaffGet_FRM::addRow);
    connect(m_family, &TDetail_Rows_Frame::editRow, this, &TStaffGet_FRM::editRow);
    connect(m_family, &TDetail_Rows_Frame::deleteRow, this, &TStaffGet_FRM::deleteRow);
}
