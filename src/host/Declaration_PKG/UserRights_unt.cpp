#include "host/Declaration_PKG/UserRights_unt.h"

#include "host/Declaration_PKG/Administrators_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/database/Query.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const int nameWidth = 50; // characters of UserRole.Name

/// Where rights are kept: a user's own, or a role's.
struct THolder {
    QString table;
    QString column;
    int code;
    QString caption; ///< as the event log names it
};

THolder ofUser(int code, const QString &name)
{
    return {u"UserRight"_s, u"UserCode"_s, code, u"دسترسی های کاربر «%1»"_s.arg(name)};
}

THolder ofRole(int code, const QString &name)
{
    return {u"UserRoleRight"_s, u"RoleCode"_s, code, u"دسترسی های نقش «%1»"_s.arg(name)};
}

QList<TRight> rightsOf(const THolder &holder)
{
    TQuery query(DM.ADOConnection1, u"Rights_QUR"_s);
    query.setStatement(
        TStatement(u"select SoftwarePart, Permission from %1 where %2="_s.arg(holder.table, holder.column))
            .integer(holder.code)
            .sql(" order by SoftwarePart, Permission"));
    query.open();
    QList<TRight> rights;
    for (int row = 0; row < query.recordCount(); ++row)
        rights.append(
            {TSoftwarePart(query.valueAt(row, 0).toInt()), TPermission(query.valueAt(row, 1).toInt())});
    return rights;
}

QString namesOf(TSoftwarePart part, const QList<TRight> &rights)
{
    QStringList names;
    for (const TRight &right : rights)
        if (right.part == part && !names.contains(PermissionName(right.right)))
            names << PermissionName(right.right);
    return names.isEmpty() ? u"هیچ"_s : names.join(u"، "_s);
}

/// One line for each part, so that none is cut; parts that no screen asks for, too.
void noteChanges(const THolder &holder, const QList<TRight> &before, const QList<TRight> &after)
{
    QList<TSoftwarePart> parts;
    for (const TRightName &row : AllRights())
        parts << row.right.part;
    for (const TRight &right : before + after)
        parts << right.part;
    QList<TSoftwarePart> told;
    for (const TSoftwarePart part : std::as_const(parts)) {
        const QString then = namesOf(part, before);
        const QString now = namesOf(part, after);
        if (then == now || told.contains(part))
            continue;
        told << part;
        NoteUpkeep(cpEdit, u"%1 در %2: از %3 به %4"_s.arg(holder.caption, SoftwarePartName(part), then, now));
    }
}

void replaceRights(const THolder &holder, const QList<TRight> &rights)
{
    TConnection &connection = *DM.ADOConnection1;
    noteChanges(holder, rightsOf(holder), rights);
    connection.execute(
        TStatement(u"delete from %1 where %2="_s.arg(holder.table, holder.column)).integer(holder.code));
    for (qsizetype i = 0; i < rights.size(); ++i) {
        if (rights.indexOf(rights[i]) != i)
            continue;
        connection.execute(TStatement(u"insert into %1(%2, SoftwarePart, Permission) values("_s.arg(
                                          holder.table, holder.column))
                               .integer(holder.code)
                               .sql(",")
                               .integer(int(rights[i].part))
                               .sql(",")
                               .integer(int(rights[i].right))
                               .sql(")"));
    }
}

QString nameOfUser(int code)
{
    return DM.ADOConnection1->scalar(TStatement("select Name from UserAccount where Code=").integer(code))
        .toString();
}

QString namesOf(const QList<TRole> &roles, const QList<int> &codes)
{
    QStringList names;
    for (const TRole &role : roles)
        if (codes.contains(role.code))
            names << role.name;
    return names.isEmpty() ? u"هیچ"_s : names.join(u"، "_s);
}

/// False: a role is not there any more.
bool replaceRoles(int code, const QString &name, const QList<int> &roles)
{
    const QList<TRole> all = ListRoles();
    const QList<int> before = RolesOfUser(code);
    TConnection &connection = *DM.ADOConnection1;
    connection.execute(TStatement("delete from UserRoleMember where UserCode=").integer(code));
    for (qsizetype i = 0; i < roles.size(); ++i) {
        if (roles.indexOf(roles[i]) != i)
            continue;
        if (std::none_of(all.begin(), all.end(), [&](const TRole &role) { return role.code == roles[i]; }))
            return false;
        connection.execute(TStatement("insert into UserRoleMember(UserCode, RoleCode) values(")
                               .integer(code)
                               .sql(",")
                               .integer(roles[i])
                               .sql(")"));
    }
    const QString then = namesOf(all, before);
    const QString now = namesOf(all, roles);
    if (then != now)
        NoteUpkeep(cpEdit, u"نقش های کاربر «%1»: از %2 به %3"_s.arg(name, then, now));
    return true;
}

bool nameTaken(const TRole &role, const QList<TRole> &roles)
{
    return std::any_of(roles.begin(), roles.end(), [&](const TRole &other) {
        return other.code != role.code && NameKey(other.name, nameWidth) == NameKey(role.name, nameWidth);
    });
}

void addRole(TRole &role)
{
    TConnection &connection = *DM.ADOConnection1;
    role.code = connection.scalar(TStatement("select isnull(max(Code),0)+1 from UserRole")).toInt();
    connection.execute(TStatement("insert into UserRole(Code, Name) values(")
                           .integer(role.code)
                           .sql(",")
                           .text(role.name)
                           .sql(")"));
    NoteUpkeep(cpNew, u"نقش تازه «%1»"_s.arg(role.name));
}

void renameRole(const TRole &role, const QString &before)
{
    DM.ADOConnection1->execute(
        TStatement("update UserRole set Name=").text(role.name).sql(" where Code=").integer(role.code));
    NoteUpkeep(cpEdit, u"نقش «%1» اکنون «%2»"_s.arg(before, role.name));
}

} // namespace

QList<TRight> RightsOfUser(int code)
{
    return rightsOf(ofUser(code, {}));
}

QList<int> RolesOfUser(int code)
{
    TQuery query(DM.ADOConnection1, u"Roles_QUR"_s);
    query.setStatement(TStatement("select RoleCode from UserRoleMember where UserCode=")
                           .integer(code)
                           .sql(" order by RoleCode"));
    query.open();
    QList<int> roles;
    for (int row = 0; row < query.recordCount(); ++row)
        roles << query.valueAt(row, 0).toInt();
    return roles;
}

bool SetRightsOfUser(int code, const QList<TRight> &rights)
{
    return AsAdministrator(false, false, [&] {
               replaceRights(ofUser(code, nameOfUser(code)), rights);
               return TLoginResult::Ok;
           }) == TLoginResult::Ok;
}

TLoginResult SetRightsAndRoles(int code, const QList<TRight> &rights, const QList<int> &roles)
{
    return AsAdministrator(false, false, [&] {
        const QString name = nameOfUser(code);
        if (name.isNull())
            return TLoginResult::NoSuchUser;
        const bool wasAdministrator = RolesOfUser(code).contains(AdministratorRole);
        replaceRights(ofUser(code, name), rights);
        if (!replaceRoles(code, name, roles))
            return TLoginResult::NoSuchRole;
        // A sample company has none, and goes on without one.
        return wasAdministrator && !AdministratorIsLeft() ? TLoginResult::LastAdministrator
                                                          : TLoginResult::Ok;
    });
}

QList<TRole> ListRoles()
{
    TQuery query(DM.ADOConnection1, u"Roles_QUR"_s);
    query.setStatement(
        "select o.Code, o.Name, r.SoftwarePart, r.Permission from UserRole as o left join UserRoleRight as r "
        "on r.RoleCode=o.Code order by o.Code, r.SoftwarePart, r.Permission");
    query.open();
    QList<TRole> roles;
    for (int row = 0; row < query.recordCount(); ++row) {
        const int code = query.valueAt(row, 0).toInt();
        if (roles.isEmpty() || roles.last().code != code)
            roles.append({code, query.valueAt(row, 1).toString(), {}});
        if (!query.valueAt(row, 2).isNull())
            roles.last().rights.append(
                {TSoftwarePart(query.valueAt(row, 2).toInt()), TPermission(query.valueAt(row, 3).toInt())});
    }
    return roles;
}

QHash<int, QStringList> RoleNamesOfUsers()
{
    TQuery query(DM.ADOConnection1, u"Members_QUR"_s);
    query.setStatement("select m.UserCode, o.Name from UserRoleMember as m inner join UserRole as o on "
                       "o.Code=m.RoleCode order by m.UserCode, o.Code");
    query.open();
    QHash<int, QStringList> names;
    for (int row = 0; row < query.recordCount(); ++row)
        names[query.valueAt(row, 0).toInt()] << query.valueAt(row, 1).toString();
    return names;
}

TLoginResult SaveRole(TRole &role)
{
    TRole saved = role;
    saved.name = StoredName(role.name, nameWidth);
    if (NameKey(saved.name, nameWidth).isEmpty())
        return TLoginResult::NameEmpty;
    const TLoginResult result = AsAdministrator(false, false, [&] {
        const QList<TRole> roles = ListRoles();
        if (nameTaken(saved, roles))
            return TLoginResult::NameTaken;
        const auto before = std::find_if(roles.begin(), roles.end(),
                                         [&](const TRole &other) { return other.code == saved.code; });
        if (saved.code == 0)
            addRole(saved);
        else if (before == roles.end())
            return TLoginResult::NoSuchRole;
        else if (before->name != saved.name)
            renameRole(saved, before->name);
        if (saved.code != AdministratorRole)
            replaceRights(ofRole(saved.code, saved.name), saved.rights);
        return TLoginResult::Ok;
    });
    if (result == TLoginResult::Ok)
        role = saved;
    return result;
}

TLoginResult DeleteRole(int code)
{
    if (code == AdministratorRole)
        return TLoginResult::RoleStays;
    return AsAdministrator(false, false, [&] {
        TConnection &connection = *DM.ADOConnection1;
        const QString name =
            connection.scalar(TStatement("select Name from UserRole where Code=").integer(code)).toString();
        if (name.isNull())
            return TLoginResult::NoSuchRole;
        TQuery members(&connection, u"Members_QUR"_s);
        members.setStatement(
            TStatement("select a.Name from UserRoleMember as m inner join UserAccount as a on "
                       "a.Code=m.UserCode where m.RoleCode=")
                .integer(code));
        members.open();
        for (int row = 0; row < members.recordCount(); ++row)
            NoteUpkeep(cpEdit,
                       u"نقش «%1» از کاربر «%2» گرفته شد"_s.arg(name, members.valueAt(row, 0).toString()));
        replaceRights(ofRole(code, name), {});
        connection.execute(TStatement("delete from UserRoleMember where RoleCode=").integer(code));
        connection.execute(TStatement("delete from UserRole where Code=").integer(code));
        NoteUpkeep(cpDelete, u"حذف نقش «%1»"_s.arg(name));
        return TLoginResult::Ok;
    });
}
