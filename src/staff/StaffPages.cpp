// The pages of the staff editor and what stands on them.

#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"
#include "host/BaseFrame_PKG/Pic_Get.h"
#include "host/Component_ZLM/FileDialogs.h"
#include "staff/StaffFields.h"
#include "staff/StaffGet_UNT.h"
#include "staff/Staff_DM_UNT.h"

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
    Store.newCode = [] { return Staff_DM->Staff_GetNewCode(); };
    Store.read = [](const QVariant &code, TStaff_Mapper &staff) {
        Staff_DM->Staff_GetById(code, staff);
        return !Staff_DM->StaffGet_QUR->isEmpty();
    };
    Staff_PC->setObjectName(u"Staff_PC"_s);
    SetPages(Staff_PC);
    buildGeneral();
    buildPersonnel();
    AddFields(AddPage(Staff_PC, u"تکمیلی"_s, u"ts3"_s), staffFields(), u"Staff"_s, spFurther);
    buildFamily();
    GuardPage(familyPage, cspStaff, cpStaffFamilyPage);
    Body()->addWidget(Staff_PC, 1);
    BuildFooter(u"ذخيره F3"_s, u"خروج Esc"_s);
    resize(900, 520);
}

void TStaffGet_FRM::buildGeneral()
{
    auto *page = AddPage(Staff_PC, u"عمومی"_s, u"ts1"_s);
    AddFields(page, staffFields(), u"Staff"_s, spGeneral);
    Code_EDT->SetRange(0, largestCode);
    Code_EDT->SetText(u"0"_s);
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
    AddFields(page, staffFields(), u"Staff"_s, spPersonnel);
    LeaveDate_CHK = AddTickBox(LeaveDate_EDT, u"LeaveDate_CHK"_s);
    LeaveDate_LBL = CaptionOf(LeaveDate_EDT);
    LeaveDate_LBL->setObjectName(u"LeaveDate_LBL"_s);
    PersonnelCode_EDT->SetText(u"0"_s);
    InsuranceNumber_EDT->SetText(u"0"_s);
    connect(LeaveDate_CHK, &TSmartCheckBox_ZLM::changed, this, &TStaffGet_FRM::leaveDateChanged);
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
