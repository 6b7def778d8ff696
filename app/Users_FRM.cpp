#include "app/Users_FRM.h"

#include "app/Ask.h"
#include "app/RightsMatrix_FRM.h"
#include "app/Roles_FRM.h"
#include "host/Component_ZLM/PasswordHint_ZLM.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
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
                     {u"نام کاربر"_s, u"نام و نام خانوادگی"_s, u"مدیر سیستم"_s, u"فعال"_s, u"نقش ها"_s})
{
    AddFreeButton(u"New_BTN"_s, u"جدید F4"_s, u"F4"_s, [this] { edit(0); });
    AddRowButton(u"EDit_BTN"_s, u"ویرایش F5"_s, u"F5"_s, [this] { edit(current().Code); });
    AddRowButton(u"Rights_BTN"_s, u"دسترسی ها F6"_s, u"F6"_s, [this] { editRights(); });
    AddRowButton(u"Del_BTN"_s, u"حذف F7"_s, u"F7"_s, [this] { remove(); });
    AddFreeButton(u"Roles_BTN"_s, u"نقش ها F8"_s, u"F8"_s, [this] {
        TRoleList_FRM().exec();
        Refresh();
    });
    AddFreeButton(u"Matrix_BTN"_s, u"جدول دسترسی ها F9"_s, u"F9"_s, [] { TRightsMatrix_FRM().exec(); });
    AddExitButton();
}

QList<QStringList> TUserList_FRM::ReadRows()
{
    m_users = ListUsers();
    const QHash<int, QStringList> roles = RoleNamesOfUsers();
    return TextsOf(m_users, [&](const TUserInfo &user) {
        return QStringList{user.Name, user.FullName, yesNo(user.IsAdmin), yesNo(user.IsActive),
                           roles.value(user.Code).join(u"، "_s)};
    });
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
        Tell(LoginText({result, 0, {}, {}}), miWarning);
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
    const auto addPassword = [&](const QString &caption, const char *name) {
        auto *edit = AddInput(grid, -1, 0, caption, QLatin1String(name),
                              new TSmartEdit_ZLM(this, TSmartEdit_ZLM::Text, 128));
        edit->setEchoMode(QLineEdit::Password);
        grid->addWidget(new TPasswordHint_ZLM(edit, this), grid->rowCount(), 1);
        return edit;
    };
    Password_EDT = addPassword(u"  &گذرواژه :"_s, "Password_EDT");
    Repeat_EDT = addPassword(u"  &تکرار گذرواژه :"_s, "Repeat_EDT");
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
    if (login.result == TLoginResult::WeakPassword)
        login.why = PasswordComplaint(Password_EDT->text(), {user.Name, user.FullName});
    if (login.result != TLoginResult::Ok) {
        Tell(LoginText(login), miWarning);
        FocusInput(login.result == TLoginResult::WeakPassword ? Password_EDT : Name_EDT);
        return false;
    }
    SetIdentifier(user.Code);
    return true;
}

TUserPick_FRM::TUserPick_FRM(int without)
    : TSmallList_FRM(u"کپی دسترسی ها از کاربر"_s, u"User_Pick_GRD"_s,
                     {u"نام کاربر"_s, u"نام و نام خانوادگی"_s}),
      m_without(without)
{
    AddRowButton(u"Select_BTN"_s, u"انتخاب Enter"_s, {}, [this] {
        m_picked = m_users.at(CurrentRow()).Code;
        accept();
    });
    AddExitButton();
}

QList<QStringList> TUserPick_FRM::ReadRows()
{
    m_users = ListUsers();
    m_users.removeIf([this](const TUserInfo &user) { return user.Code == m_without; });
    return TextsOf(m_users, [](const TUserInfo &user) { return QStringList{user.Name, user.FullName}; });
}

TUserRights_FRM::TUserRights_FRM(const TUserInfo &user)
    : TRightsEditor(fmEdit), Roles_LST(new QListWidget(this))
{
    SetIdentifier(user.Code);
    SetTitle(u"دسترسی های کاربر %1"_s.arg(user.Name));
    Roles_LST->setObjectName(u"Roles_LST"_s);
    Roles_LST->setAccessibleName(u"نقش ها"_s);
    Roles_LST->setFlow(QListView::LeftToRight);
    Roles_LST->setWrapping(true);
    Roles_LST->setResizeMode(QListView::Adjust);
    Roles_LST->setSpacing(4);
    Roles_LST->setMaximumHeight(64);
    auto *caption = new QLabel(u"&نقش ها :"_s, this);
    caption->setBuddy(Roles_LST);
    Body()->addWidget(caption);
    Body()->addWidget(Roles_LST);
    AddTabStop(Roles_LST);
    connect(Roles_LST, &QListWidget::itemChanged, this, [this] {
        SetIsSaved(false);
        markRoles();
    });
    BuildRightsFooter();
    TSmartButton_ZLM *copy = AddButton(u"Copy_BTN"_s, u"کپی از کاربر F9"_s, u"F9"_s);
    connect(copy, &QAbstractButton::clicked, this, [this] { Guarded([this] { copyFromAnother(); }); });
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
    m_roles = ListRoles();
    m_rights = RightsOfUser(Identifier().toInt());
    m_ownRoles = RolesOfUser(Identifier().toInt());
}

void TUserRights_FRM::ShowRecord()
{
    show(m_rights, m_ownRoles);
}

void TUserRights_FRM::show(const QList<TRight> &rights, const QList<int> &roles)
{
    Roles_LST->clear();
    for (const TRole &role : std::as_const(m_roles)) {
        auto *item = new QListWidgetItem(role.name);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setData(Qt::UserRole, role.code);
        item->setCheckState(roles.contains(role.code) ? Qt::Checked : Qt::Unchecked);
        Roles_LST->addItem(item);
    }
    Roles_LST->setCurrentRow(0);
    TickRights(rights);
    markRoles();
}

QList<int> TUserRights_FRM::tickedRoles() const
{
    QList<int> roles;
    for (int row = 0; row < Roles_LST->count(); ++row)
        if (Roles_LST->item(row)->checkState() == Qt::Checked)
            roles << Roles_LST->item(row)->data(Qt::UserRole).toInt();
    return roles;
}

void TUserRights_FRM::markRoles()
{
    const QList<int> ticked = tickedRoles();
    MarkRights([&](const TRight &right) {
        QStringList names;
        for (const TRole &role : std::as_const(m_roles))
            if (ticked.contains(role.code) && (role.code == AdministratorRole || role.rights.contains(right)))
                names << role.name;
        return names.join(u"، "_s);
    });
}

void TUserRights_FRM::copyFromAnother()
{
    TUserPick_FRM pick(Identifier().toInt());
    pick.exec();
    FocusInput(Rights_GRD);
    if (pick.Picked() == 0)
        return;
    show(RightsOfUser(pick.Picked()), RolesOfUser(pick.Picked()));
    SetIsSaved(false);
}

bool TUserRights_FRM::SaveRecord()
{
    const TLoginResult result = SetRightsAndRoles(Identifier().toInt(), TickedRights(), tickedRoles());
    if (result == TLoginResult::Ok)
        return true;
    Tell(LoginText({result, 0, {}, {}}), miWarning);
    return false;
}
