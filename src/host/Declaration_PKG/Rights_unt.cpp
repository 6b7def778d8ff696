#include "host/Declaration_PKG/Rights_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/database/Query.h"
#include "host/database/Transaction.h"

#include <algorithm>

namespace {

struct TPartRights {
    TSoftwarePart part;
    QString name;
    QList<TPermission> rights;
};

// Every part with the rights that its screens ask for.
const QList<TPartRights> &parts()
{
    static const QList<TPartRights> all{
        {cspPayrollInfo, QStringLiteral("تنظیمات حقوق و دستمزد"), {cpOpen, cpPayrollSecondPage}},
        {cspCalcMethod, QStringLiteral("روش های محاسباتی"), {cpOpen, cpNew, cpEdit, cpDelete}},
        {cspTax, QStringLiteral("جداول مالیاتی"), {cpOpen, cpNew, cpEdit, cpDelete}},
        {cspCalender, QStringLiteral("تقویم کاری"), {cpOpen, cpNew, cpEdit, cpDelete}},
        {cspStaff, QStringLiteral("کارمندان"), {cpOpen, cpNew, cpEdit, cpDelete, cpStaffFamilyPage}},
        {cspFiscal, QStringLiteral("مزایا"), {cpOpen, cpNew, cpEdit, cpDelete}},
        {cspDeduction, QStringLiteral("کسورات"), {cpOpen, cpNew, cpEdit, cpDelete}},
        {cspStaffGroup, QStringLiteral("گروه های کارمندان"), {cpNew, cpEdit, cpDelete}},
        {cspFiscalGrp, QStringLiteral("گروه های مزایا"), {cpNew, cpEdit, cpDelete}},
        {cspDeductionGrp, QStringLiteral("گروه های کسورات"), {cpNew, cpEdit, cpDelete}},
        {cspPerson, QStringLiteral("گروه های اشخاص"), {cpNew, cpEdit, cpDelete}},
    };
    return all;
}

} // namespace

QString SoftwarePartName(TSoftwarePart part)
{
    for (const TPartRights &row : parts()) {
        if (row.part == part)
            return row.name;
    }
    return QString::number(int(part));
}

QString PermissionName(TPermission right)
{
    switch (right) {
    case cpNew:
        return QStringLiteral("جدید");
    case cpEdit:
        return QStringLiteral("ویرایش");
    case cpDelete:
        return QStringLiteral("حذف");
    case cpPrint:
        return QStringLiteral("چاپ");
    case cpOpen:
        return QStringLiteral("مشاهده");
    case cpPayrollSecondPage:
        return QStringLiteral("صفحه دوم تنظیمات");
    case cpStaffFamilyPage:
        return QStringLiteral("صفحه خانواده");
    }
    return QString::number(int(right));
}

const QList<TRightName> &AllRights()
{
    static const QList<TRightName> all = [] {
        QList<TRightName> rights;
        for (const TPartRights &row : parts()) {
            for (const TPermission right : row.rights)
                rights.append({{row.part, right}, row.name, PermissionName(right)});
        }
        return rights;
    }();
    return all;
}

QList<TRight> RightsOfUser(int code)
{
    TQuery query(DM.ADOConnection1, QStringLiteral("Rights_QUR"));
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

void SetRightsOfUser(int code, const QList<TRight> &rights)
{
    TConnection &connection = *DM.ADOConnection1;
    TTransaction transaction(connection);
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
}
