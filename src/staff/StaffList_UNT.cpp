#include "staff/StaffList_UNT.h"

#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/BaseFrame_PKG/Range_Date_Search_Frame.h"
#include "host/BaseFrame_PKG/Tab_Search_Frame.h"
#include "host/Component_ZLM/PictureBox_ZLM.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Method_declare_unt.h"
#include "host/Declaration_PKG/Picturefunctions_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/GroupPane_UNT.h"
#include "host/NewBaseForms_PKG/GroupPickers_UNT.h"
#include "host/database/AnswerWait.h"
#include "staff/StaffGet_UNT.h"
#include "staff/Staff_DM_UNT.h"

#include <QLabel>
#include <QMenu>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

TStaffList_FRM *StaffList_FRM = nullptr;

namespace {

const int picturesAfter = 40; // milliseconds after the last move

// Tabs of the search.
enum { allStaff = 0, employedStaff = 1, leftStaff = 2 };

const QList<TGridColumn> &columns()
{
    static const QList<TGridColumn> list = {
        {"Code", u"کد"_s, 60, true, TGridColumn::Code},
        {"CoDate", u"تاریخ استخدام"_s, 100, true, TGridColumn::Code},
        {"fullnameTitle", u"نام و نام خانوادگی"_s, 180},
        {"PersonnelCode", u"کد پرسنلی"_s, 100, true, TGridColumn::Code},
        {"CardNumber", u"شماره کارت"_s, 100, true, TGridColumn::Code},
        {"DegreeTitle", u"مدرک"_s, 100},
        {"Major", u"رشته تحصیلی"_s, 100},
        {"InsuranceNumber", u"کد بیمه"_s, 100, true, TGridColumn::Code},
        {"MilitaryTitle", u"وضعیت نظام وظیفه"_s, 130},
        {"IsMarriedTitle", u"وضعیت تاهل"_s, 100},
        {"SexTitle", u"جنسیت"_s, 60},
        {"LeaveDate", u"تاریخ ترک کار"_s, 100, true, TGridColumn::Code},
        {"Add1", u"آدرس"_s, 220},
        {"Mob", u"شماره موبایل"_s, 100, true, TGridColumn::Code},
        {"Tel1", u"تلفن"_s, 100, true, TGridColumn::Code},
        {"Comment", u"شرح"_s, 160},
        {"BankTitle", u"بانک"_s, 100},
        {"AccountNumber", u"شماره حساب"_s, 130, true, TGridColumn::Code},
        {"Department", u"محل خدمت"_s, 100},
        {"BirthPlace", u"محل تولد"_s, 100},
        {"BirthDate", u"تاریخ تولد"_s, 100, true, TGridColumn::Code},
        {"IDNumber", u"شماره شناسنامه"_s, 100, true, TGridColumn::Code},
        {"FatherName", u"نام پدر"_s, 100},
        {"NationalID", u"کد ملی"_s, 100, true, TGridColumn::Code},
        {"UserCreated", u"کاربر ایجاد کننده"_s, 140},
        {"UserModified", u"کاربر تغییر دهنده"_s, 140},
        {"CreatedDateTime", u"زمان ایجاد"_s, 130, true, TGridColumn::Code},
        {"ModifiedDateTime", u"زمان تغییر"_s, 130, true, TGridColumn::Code},
    };
    return list;
}

const TSearchItem employmentDate = {"CoDate", u"تاریخ استخدام"_s, TSearchItem::Date};

// Their order and their spelling are the ones that users know.
const QList<TSearchItem> &searchItems()
{
    static const QList<TSearchItem> list = {
        {"NationalID", u"کد ملی"_s},
        {"FatherName", u"نام پدر"_s},
        {"IDNumber", u"شماره شناسنامه"_s},
        {"BirthDate", u"تاریخ تولد"_s, TSearchItem::Date},
        {"BirthPlace", u"محل تولد"_s},
        {"Department", u"محل خدمت"_s},
        {"AccountNumber", u"شماره حساب"_s},
        {"BankTitle", u"بانک"_s},
        {"Tel1", u"شماره تلفن"_s},
        {"Mob", u"شماره موبایل"_s},
        {"Add1", u"آدرس"_s},
        {"LeaveDate", u"تاریخ ترک کار"_s, TSearchItem::Date},
        {"SexTitle", u"جنسیت"_s},
        {"IsMarriedTitle", u"وضعت تاهل"_s},
        {"MilitaryTitle", u"وضعیت نظام وظیفه"_s},
        {"InsuranceNumber", u"شماره بیمه"_s},
        {"Major", u"رشته تحصیلی"_s},
        {"DegreeTitle", u"مدرک"_s},
        {"CardNumber", u"شماره کارت"_s},
        {"PersonnelCode", u"کد پرسنلی"_s},
        {"fullnameTitle", u"نام و نام خانوادگی"_s, TSearchItem::Text, true},
        {"CoDate", u"تاریخ استخدام"_s, TSearchItem::Date},
        {"Code", u"کد"_s, TSearchItem::Digits},
        {"Comment", u"شرح"_s},
        {"UserCreated", u"کاربر ایجاد کننده"_s},
        {"UserModified", u"کاربر تغییر دهنده"_s},
        {"CreatedDateTime", u"زمان ایجاد"_s},
        {"ModifiedDateTime", u"زمان تغییر"_s},
    };
    return list;
}

const QString &word()
{
    static const QString employee = u"کارمند"_s;
    return employee;
}

} // namespace

TStaffList_FRM::TStaffList_FRM(TFormMode mode, const QString &text)
    : TBaseDock_FRM(mode, text), m_pictures(new QTimer(this))
{
    SetTitle(u"لیست کارمندان"_s);
    BuildList(Staff_DM->List_QUR, u"Staff_List_GRD"_s, columns(), searchItems());
    BuildUsualLayout({});
    buildSearch();
    buildGroups();
    SetListPart(cspStaff);
    BuildButtons(true, true);
    buildPictures();
    resize(1000, 620);
}

TStaffList_FRM::~TStaffList_FRM() = default;

void TStaffList_FRM::buildSearch()
{
    Tab_Search = new TTab_Search_Frame(this);
    Tab_Search->init({u"همه"_s, u"شاغل"_s, u"ترک کار"_s});
    connect(Tab_Search, &TTab_Search_Frame::tabChanged, this, &TStaffList_FRM::search);
    Range_Date_Search = new TRange_Date_Search_Frame(this);
    connect(Range_Date_Search, &TSearch_Frame::searchChanged, this, &TStaffList_FRM::search);
    auto *row = new QHBoxLayout;
    row->addWidget(Tab_Search, 1);
    row->addWidget(new QLabel(employmentDate.caption, this));
    row->addWidget(Range_Date_Search);
    SearchPanel()->addLayout(row);
    ZelmoSearchManager1->SetOwnFilter([this] { return ownFilter(); });
}

void TStaffList_FRM::buildGroups()
{
    BuildGroups(Staff_DM->GroupList_QUR, u"StaffGroup_GRD"_s, u"نام گروه"_s, u"گروه کارمندان F11"_s);
    connect(Groups, &TGroup_Pane::groupMoved, this, &TStaffList_FRM::search);
    connect(Groups->Group_BTN, &QAbstractButton::clicked, this,
            [this] { Guarded([this] { chooseGroup(); }); });
    connect(Groups->GNew_PMI, &QAction::triggered, this, [this] {
        New_Group(cspStaffGroup);
        Groups->Reread(true);
    });
    connect(Groups->GEdit_PMI, &QAction::triggered, this, [this] {
        Edit_Group(cspStaffGroup, Groups->CurrentCode());
        Groups->Reread(false);
    });
    connect(Groups->GDelete_PMI, &QAction::triggered, this, [this] {
        Delete_Group(cspStaffGroup, Groups->CurrentCode());
        Groups->Reread(false);
    });
}

void TStaffList_FRM::buildPictures()
{
    Pic_Show = new QFrame(Center());
    Pic_Show->setObjectName(u"Pic_Show"_s);
    Pic_Show->setMinimumWidth(170);
    auto *column = new QVBoxLayout(Pic_Show);
    auto *close = new TSmartButton_ZLM(u"x"_s, Pic_Show);
    close->setObjectName(u"ClosePicture_BTN"_s);
    close->setFocusPolicy(Qt::NoFocus);
    column->addWidget(close, 0, Qt::AlignLeft | Qt::AlignAbsolute);
    Pic_IMG = new TPictureBox_ZLM(Pic_Show);
    Pic_IMG->setObjectName(u"Pic_IMG"_s);
    Pic_IMG->SetEmptyText(u"عکس"_s);
    Pic_IMG2 = new TPictureBox_ZLM(Pic_Show);
    Pic_IMG2->setObjectName(u"Pic_IMG2"_s);
    Pic_IMG2->SetEmptyText(u"اثر انگشت"_s);
    column->addWidget(Pic_IMG, 1);
    column->addWidget(Pic_IMG2, 1);
    Center()->addWidget(Pic_Show);
    ShowPicture_BTN = AddButton(u"ShowPicture_BTN"_s, u"µ"_s, {});
    connect(ShowPicture_BTN, &QAbstractButton::clicked, this,
            [this] { showPicturePanel(Pic_Show->isHidden()); });
    connect(close, &QAbstractButton::clicked, this, [this] { showPicturePanel(false); });
    m_pictures->setSingleShot(true);
    m_pictures->setInterval(picturesAfter);
    connect(m_pictures, &QTimer::timeout, this,
            [this] { WhenAnswered(this, [this] { Guarded([this] { showPictures(); }); }); });
    const auto later = [this] {
        if (!Pic_Show->isHidden())
            m_pictures->start();
    };
    connect(ListQuery(), &TQuery::currentChanged, this, later);
    connect(ZelmoSearchManager1, &TZelmoSearchManager::executed, this, later);
    showPicturePanel(false);
}

void TStaffList_FRM::SetListText()
{
    ListQuery()->close();
    ListQuery()->setStatement("select * from staff_VW");
}

void TStaffList_FRM::PrepareSearch()
{
    // The groups first: the current one narrows the list.
    Staff_DM->StaffGroup_Get();
    Range_Date_Search->init(ZelmoSearchManager1, employmentDate);
    TBaseDock_FRM::PrepareSearch();
}

TStatement TStaffList_FRM::ownFilter() const
{
    TStatement filter;
    if (const int group = Groups->CurrentCode(); group > 0)
        AddFilter(filter, TStatement::format("(StaffGroup = %d)", {group}));
    if (Tab_Search->CurrentTab() == employedStaff)
        AddFilter(filter, "(LeaveDate = '')");
    else if (Tab_Search->CurrentTab() == leftStaff)
        AddFilter(filter, "(LeaveDate <> '')");
    return filter;
}

void TStaffList_FRM::search()
{
    ZelmoSearchManager1->ExecuteFilter_DataSet();
}

void TStaffList_FRM::chooseGroup()
{
    const int code = Select_GroupList(cspStaffGroup, {});
    Groups->Reread(false);
    if (code > 0)
        Staff_DM->GroupList_QUR->locate("Code", code);
}

TBaseGet_FRM *TStaffList_FRM::CreateEditor(bool newRecord)
{
    if (newRecord)
        return new TStaffGet_FRM(cspStaff, false, QString::number(Groups->CurrentCode()));
    return new TStaffGet_FRM(cspStaff, ListQuery()->value("Code"), fmEdit, false);
}

void TStaffList_FRM::NewRecord()
{
    if (Staff_DM->GroupList_QUR->recordCount() <= 1) {
        MakeGroup();
        chooseGroup();
        return;
    }
    if (ShowEditor(CreateEditor(true)))
        ListQuery()->last();
}

void TStaffList_FRM::DeleteRecord()
{
    if (ListQuery()->isEmpty() || !MayDelete(cspStaff) || !CurrentIsStored())
        return;
    const QString code = ListQuery()->asString("Code");
    if (LocateLockCode_SoftwarePart(code, cspStaff, IniOptions.Com_Index, false)) {
        MSGInUse(word());
        return;
    }
    if (!ConfirmDelete(cspStaff, code, RecordName()))
        return;
    DM.ADOConnection1->clearLastError();
    if (!Staff_DM->Staff_Del(code))
        TellDeleteFailed(word());
    Staff_DM->ClearDataTMPFamily(code);
    RefreshList();
}

QString TStaffList_FRM::RecordName() const
{
    return Grid()->NameOfRow(ListQuery()->position(), {u"Code"_s, u"fullnameTitle"_s});
}

bool TStaffList_FRM::SelectRecord()
{
    SelectedCode = ListQuery()->asInteger("Code");
    SelectedStaffGroup = ListQuery()->asInteger("StaffGroup");
    SelectedFullName = ListQuery()->asString("fullnameTitle");
    return true;
}

void TStaffList_FRM::showPicturePanel(bool show)
{
    Pic_Show->setVisible(show);
    ShowPicture_BTN->setToolTip(show ? u"عدم نمايش تصوير"_s : u"نمايش تصوير"_s);
    ShowPicture_BTN->setAccessibleName(ShowPicture_BTN->toolTip());
    const QColor color = show ? QColor(82, 82, 82) : QColor(Qt::black);
    ShowPicture_BTN->setStyleSheet(u"QToolTip { color: %1; }"_s.arg(color.name()));
    QPalette palette = ShowPicture_BTN->palette();
    palette.setColor(QPalette::ButtonText, color);
    ShowPicture_BTN->setPalette(palette);
    if (show)
        Guarded([this] { showPictures(); });
}

void TStaffList_FRM::showPictures()
{
    const bool row = ListQuery()->active() && !ListQuery()->isEmpty();
    ShowPicture(row ? ListQuery()->value("picture") : QVariant(), Pic_IMG);
    ShowPicture(row ? ListQuery()->value("FingerPrint") : QVariant(), Pic_IMG2);
}
