#include "app/Roles_FRM.h"

#include "app/Ask.h"

#include <QGridLayout>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

TRoleList_FRM::TRoleList_FRM()
    : TSmallList_FRM(u"نقش ها"_s, u"Role_List_GRD"_s, {u"نام نقش"_s, u"دسترسی ها"_s})
{
    AddFreeButton(u"New_BTN"_s, u"جدید F4"_s, u"F4"_s, [this] { edit(0); });
    AddRowButton(u"EDit_BTN"_s, u"ویرایش F5"_s, u"F5"_s, [this] { edit(m_roles.at(CurrentRow()).code); });
    AddRowButton(u"Del_BTN"_s, u"حذف F7"_s, u"F7"_s, [this] { remove(); });
    AddExitButton();
}

QList<QStringList> TRoleList_FRM::ReadRows()
{
    m_roles = ListRoles();
    return TextsOf(m_roles, [](const TRole &role) {
        return QStringList{role.name, role.code == AdministratorRole
                                          ? u"همه دسترسی ها و مدیریت سیستم"_s
                                          : u"%1 دسترسی"_s.arg(role.rights.size())};
    });
}

void TRoleList_FRM::edit(int code)
{
    TRoleGet_FRM editor(code);
    editor.exec();
    Refresh();
    const int saved = editor.SavedIdentifier().toInt();
    for (int row = 0; row < m_roles.size(); ++row)
        if (m_roles.at(row).code == saved)
            Table()->setCurrentCell(row, 0);
}

void TRoleList_FRM::remove()
{
    const TRole role = m_roles.at(CurrentRow());
    if (!MsgDeleteRow(u"نام نقش: \u2068%1\u2069"_s.arg(role.name)))
        return;
    if (const TLoginResult result = DeleteRole(role.code); result != TLoginResult::Ok)
        Tell(LoginText({result, 0, {}, {}}), miWarning);
    Refresh();
}

TRoleGet_FRM::TRoleGet_FRM(int code) : TRightsEditor(code == 0 ? fmNew : fmEdit)
{
    SetIdentifier(code);
    SetTitle(u"نقش"_s);
    auto *grid = new QGridLayout;
    Name_EDT = AddInput(grid, -1, 0, u"  &نام نقش :"_s, "Name_EDT", new TSmartEdit_ZLM(this));
    KeepIn(u"UserRole"_s, {{Name_EDT, "Name"}});
    Body()->addLayout(grid);
    BuildRightsFooter();
}

bool TRoleGet_FRM::Validate()
{
    return RequireInput(Name_EDT, u"نام نقش"_s);
}

void TRoleGet_FRM::ClearRecord()
{
    m_role = {};
    ShowRecord();
}

bool TRoleGet_FRM::RecordExists()
{
    const QList<TRole> roles = ListRoles();
    return std::any_of(roles.begin(), roles.end(),
                       [this](const TRole &role) { return role.code == Identifier().toInt(); });
}

void TRoleGet_FRM::LoadRecord()
{
    for (const TRole &role : ListRoles())
        if (role.code == Identifier().toInt())
            m_role = role;
    if (m_role.code != AdministratorRole)
        return;
    m_role.rights.clear();
    for (const TRightName &right : AllRights())
        m_role.rights << right.right;
}

void TRoleGet_FRM::ShowRecord()
{
    Name_EDT->SetText(m_role.name);
    TickRights(m_role.rights);
    const bool fixed = m_role.code == AdministratorRole;
    Rights_GRD->setEnabled(!fixed);
    for (const char *button : {"TickRow_BTN", "TickColumn_BTN", "TickAll_BTN"})
        findChild<QWidget *>(QLatin1String(button))->setEnabled(!fixed);
}

bool TRoleGet_FRM::SaveRecord()
{
    TRole role{Mode() == fmNew ? 0 : Identifier().toInt(), Name_EDT->GetText(), TickedRights()};
    const TLoginResult result = SaveRole(role);
    if (result != TLoginResult::Ok) {
        Tell(result == TLoginResult::NameTaken ? u"نقش دیگری با این نام ثبت شده است."_s
             : result == TLoginResult::NameEmpty ? u"نام نقش وارد نشده است."_s
                                                 : LoginText({result, 0, {}, {}}),
             miWarning);
        FocusInput(Name_EDT);
        return false;
    }
    SetIdentifier(role.code);
    return true;
}
