#include "host/Declaration_PKG/UserRights_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/database/Query.h"
#include "host/database/Transaction.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString namesOf(TSoftwarePart part, const QList<TRight> &rights)
{
    QStringList names;
    for (const TRight &right : rights)
        if (right.part == part && !names.contains(PermissionName(right.right)))
            names << PermissionName(right.right);
    return names.isEmpty() ? u"هیچ"_s : names.join(u"، "_s);
}

/// One line for each part, so that none is cut.
void noteChanges(int code, const QList<TRight> &before, const QList<TRight> &after)
{
    const QString name =
        DM.ADOConnection1->scalar(TStatement("select Name from UserAccount where Code=").integer(code))
            .toString();
    QList<TSoftwarePart> told;
    for (const TRightName &row : AllRights()) {
        const TSoftwarePart part = row.right.part;
        const QString then = namesOf(part, before);
        const QString now = namesOf(part, after);
        if (then == now || told.contains(part))
            continue;
        told << part;
        SetUserEvent(TSoftwarePart(0), cpEdit,
                     u"دسترسی های کاربر «%1» در %2: از %3 به %4"_s.arg(name, row.partName, then, now), true,
                     false);
    }
}

} // namespace

QList<TRight> RightsOfUser(int code)
{
    TQuery query(DM.ADOConnection1, u"Rights_QUR"_s);
    query.setStatement(TStatement("select SoftwarePart, Permission from UserRight where UserCode=")
                           .integer(code)
                           .sql(" order by SoftwarePart, Permission"));
    query.open();
    QList<TRight> rights;
    for (int row = 0; row < query.recordCount(); ++row)
        rights.append(
            {TSoftwarePart(query.valueAt(row, 0).toInt()), TPermission(query.valueAt(row, 1).toInt())});
    return rights;
}

bool SetRightsOfUser(int code, const QList<TRight> &rights)
{
    TConnection &connection = *DM.ADOConnection1;
    TTransaction transaction(connection);
    if (!IsAdministrator(UserInfo))
        return false;
    noteChanges(code, RightsOfUser(code), rights);
    connection.execute(TStatement("delete from UserRight where UserCode=").integer(code));
    for (qsizetype i = 0; i < rights.size(); ++i) {
        if (rights.indexOf(rights[i]) != i)
            continue;
        connection.execute(TStatement("insert into UserRight(UserCode, SoftwarePart, Permission) values(")
                               .integer(code)
                               .sql(",")
                               .integer(int(rights[i].part))
                               .sql(",")
                               .integer(int(rights[i].right))
                               .sql(")"));
    }
    transaction.commit();
    return true;
}
