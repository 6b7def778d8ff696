#include "app/Users_FRM.h"

#include "app/Ask.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString yesNo(bool yes)
{
    return yes ? u"بله"_s : u"خیر"_s;
}

} // namespace

TUserList_FRM::TUserList_FRM()
    : TSmallList_FRM(u"کاربران"_s, u"User_List_GRD"_s,
                     {u"نام کاربر"_s, u"نام و نام خانوادگی"_s, u"مدیر سیستم"_s, u"فعال"_s})
{
    AddFreeButton(u"New_BTN"_s, u"جدید F4"_s, u"F4"_s, [this] { edit(0); });
    AddRowButton(u"EDit_BTN"_s, u"ویرایش F5"_s, u"F5"_s, [this] { edit(current().Code); });
    AddRowButton(u"Rights_BTN"_s, u"دسترسی ها F6"_s, u"F6"_s, [this] { editRights(); });
    AddRowButton(u"Del_BTN"_s, u"حذف F7"_s, u"F7"_s, [this] { remove(); });
    AddExitButton();
}

QList<QStringList> TUserList_FRM::ReadRows()
{
    m_users = ListUsers();
    QList<QStringList> rows;
    for (const TUserInfo &user : std::as_const(m_users))
        rows << QStringList{user.Name, user.FullName, yesNo(user.IsAdmin), yesNo(user.IsActive)};
    return rows;
}

void TUserList_FRM::edit(int code)
{
    TUserGet_FRM editor(code);
    editor.exec();
    Refresh();
    // What was just entered is what the next key is about.
    const int saved = editor.SavedIdentifier().toInt();
    for (int row = 0; row < m_users.size(); ++row)
        if (m_users.at(row).Code == saved)
            Table()->setCurrentCell(row, 0);
}

void TUserList_FRM::editRights()
{
    if (current().IsAdmin)
        Tell(u"مدیر سیستم همه دسترسی ها را دارد."_s);
    else
        TUserRights_FRM(current()).exec();
    Refresh();
}

void TUserList_FRM::remove()
{
    const TUserInfo user = current();
    if (user.Code == UserInfo.Code) {
        Tell(u"کاربری که با آن وارد شده اید حذف نمی شود."_s, miWarning);
        return;
    }
    if (!MsgDeleteRow(u"نام کاربر: \u2068%1\u2069 - نام و نام خانوادگی: \u2068%2\u2069"_s.arg(user.Name,
                                                                                              user.FullName)))
        return;
    if (const TLoginResult result = DeleteUser(user.Code); result != TLoginResult::Ok)
        Tell(LoginText({result, 0, {}}), miWarning);
    Refresh();
}

TUserGet_FRM::TUserGet_FRM(int code) : TBaseEditor(code == 0 ? fmNew : fmEdit)
{
    SetIdentifier(code);
    SetTitle(u"کاربر"_s);
    auto *grid = new QGridLayout;
    Name_EDT = AddInput(grid, -1, 0, u"  &نام کاربر :"_s, "Name_EDT", new TSmartEdit_ZLM(this));
    FullName_EDT = AddInput(grid, -1, 0, u"  نام و نام &خانوادگی :"_s, "FullName_EDT",
                            new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 100));
    Password_EDT = AddInput(grid, -1, 0, u"  &گذرواژه :"_s, "Password_EDT",
                            new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 128));
    Repeat_EDT = AddInput(grid, -1, 0, u"  &تکرار گذرواژه :"_s, "Repeat_EDT",
                          new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 128));
    for (TSmartEdit_ZLM *edit : {Password_EDT, Repeat_EDT})
        edit->setEchoMode(QLineEdit::Password);
    if (code != 0)
        Password_EDT->setPlaceholderText(u"خالی: بدون تغییر"_s);
    IsActive_CHK =
        AddInput(grid, -1, 0, {}, "IsActive_CHK", new TSmartCheckBox_ZLM(u"می تواند وارد &شود"_s, this));
    IsAdmin_CHK = AddInput(grid, -1, 0, {}, "IsAdmin_CHK", new TSmartCheckBox_ZLM(u"&مدیر سیستم"_s, this));
    KeepIn(u"UserAccount"_s, {{Name_EDT, "Name"}, {FullName_EDT, "FullName"}});
    Body()->addLayout(grid);
    Body()->addStretch(1);
    BuildFooter(u"ذخیره F3"_s, u"خروج Esc"_s);
    resize(460, 280);
}

bool TUserGet_FRM::Validate()
{
    if (Name_EDT->GetText().trimmed().isEmpty()) {
        MsgRequiredField(u"نام کاربر"_s, Name_EDT, this);
        FocusInput(Name_EDT);
        return false;
    }
    if (Mode() == fmNew && Password_EDT->text().isEmpty()) {
        MsgRequiredField(u"گذرواژه"_s, Password_EDT, this);
        FocusInput(Password_EDT);
        return false;
    }
    if (Password_EDT->text() != Repeat_EDT->text()) {
        Tell(u"گذرواژه و تکرار آن یکسان نیستند."_s, miWarning);
        FocusInput(Repeat_EDT);
        return false;
    }
    // Clerks alone would leave nobody to administer the suite.
    if (NoUserYet() && !(IsAdmin_CHK->isChecked() && IsActive_CHK->isChecked())) {
        Tell(u"نخستین کاربر باید مدیر فعال سیستم باشد."_s, miWarning);
        FocusInput(IsAdmin_CHK);
        return false;
    }
    return true;
}

void TUserGet_FRM::ClearRecord()
{
    m_user = {};
    Name_EDT->SetText({});
    FullName_EDT->SetText({});
    Password_EDT->SetText({});
    Repeat_EDT->SetText({});
    IsActive_CHK->setChecked(true);
    IsAdmin_CHK->setChecked(false);
}

bool TUserGet_FRM::RecordExists()
{
    return ReadUser(Identifier().toInt()).result != TLoginResult::NoSuchUser;
}

void TUserGet_FRM::LoadRecord()
{
    const QList<TUserInfo> users = ListUsers();
    for (const TUserInfo &user : users) {
        if (user.Code == Identifier().toInt())
            m_user = user;
    }
}

void TUserGet_FRM::ShowRecord()
{
    Name_EDT->SetText(m_user.Name);
    FullName_EDT->SetText(m_user.FullName);
    Password_EDT->SetText({});
    Repeat_EDT->SetText({});
    IsActive_CHK->setChecked(m_user.IsActive);
    IsAdmin_CHK->setChecked(m_user.IsAdmin);
}

bool TUserGet_FRM::SaveRecord()
{
    TUserInfo user;
    user.Code = Mode() == fmNew ? 0 : Identifier().toInt();
    user.Name = Name_EDT->GetText().trimmed();
    user.FullName = FullName_EDT->GetText().trimmed();
    user.IsActive = IsActive_CHK->isChecked();
    user.IsAdmin = IsAdmin_CHK->isChecked();
    TLogin login;
    login.result = SaveUser(user, Password_EDT->text());
    if (login.result != TLoginResult::Ok) {
        Tell(LoginText(login), miWarning);
        FocusInput(login.result == TLoginResult::WeakPassword ? Password_EDT : Name_EDT);
        return false;
    }
    SetIdentifier(user.Code);
    return true;
}

TUserRights_FRM::TUserRights_FRM(const TUserInfo &user)
    : TBaseEditor(fmEdit), Rights_GRD(new QTableWidget(this))
{
    SetIdentifier(user.Code);
    SetTitle(u"دسترسی های کاربر %1"_s.arg(user.Name));
    QList<TSoftwarePart> parts;
    QStringList rights;
    QList<TRightName> names = AllRights();
    // The rights that all parts have come first, then those of one part's own.
    std::stable_partition(names.begin(), names.end(),
                          [](const TRightName &name) { return name.right.right < 100; });
    for (const TRightName &name : std::as_const(names)) {
        if (!parts.contains(name.right.part))
            parts << name.right.part;
        if (!rights.contains(name.rightName))
            rights << name.rightName;
        m_places.append(
            {name.right, int(parts.indexOf(name.right.part)), int(rights.indexOf(name.rightName))});
    }
    Rights_GRD->setObjectName(u"Rights_GRD"_s);
    Rights_GRD->setRowCount(int(parts.size()));
    Rights_GRD->setColumnCount(int(rights.size()));
    Rights_GRD->setHorizontalHeaderLabels(rights);
    Rights_GRD->horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
    Rights_GRD->horizontalHeader()->setHighlightSections(false);
    Rights_GRD->setTabKeyNavigation(false);
    QStringList captions;
    for (const TSoftwarePart part : std::as_const(parts))
        captions << SoftwarePartName(part);
    Rights_GRD->setVerticalHeaderLabels(captions);
    for (int row = 0; row < parts.size(); ++row) {
        for (int column = 0; column < rights.size(); ++column) {
            auto *item = new QTableWidgetItem;
            item->setFlags(Qt::NoItemFlags);
            Rights_GRD->setItem(row, column, item);
        }
    }
    for (const TPlace &place : std::as_const(m_places)) {
        QTableWidgetItem *item = Rights_GRD->item(place.row, place.column);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    Rights_GRD->resizeColumnsToContents();
    connect(Rights_GRD, &QTableWidget::itemChanged, this, [this] { SetIsSaved(false); });
    Body()->addWidget(Rights_GRD, 1);
    AddTabStop(Rights_GRD);
    BuildFooter(u"ذخیره F3"_s, u"خروج Esc"_s);
    resize(920, 600);
}

QWidget *TUserRights_FRM::FirstInput()
{
    return Rights_GRD;
}

bool TUserRights_FRM::RecordExists()
{
    return ReadUser(Identifier().toInt()).result != TLoginResult::NoSuchUser;
}

void TUserRights_FRM::LoadRecord()
{
    m_rights = RightsOfUser(Identifier().toInt());
}

void TUserRights_FRM::ShowRecord()
{
    for (const TPlace &place : std::as_const(m_places)) {
        Rights_GRD->item(place.row, place.column)
            ->setCheckState(m_rights.contains(place.right) ? Qt::Checked : Qt::Unchecked);
    }
    Rights_GRD->setCurrentCell(0, 0);
}

bool TUserRights_FRM::SaveRecord()
{
    QList<TRight> rights;
    for (const TPlace &place : std::as_const(m_places)) {
        if (Rights_GRD->item(place.row, place.column)->checkState() == Qt::Checked)
            rights << place.right;
    }
    if (SetRightsOfUser(Identifier().toInt(), rights))
        return true;
    Tell(LoginText({TLoginResult::NotAdministrator, 0, {}}), miWarning);
    return false;
}
