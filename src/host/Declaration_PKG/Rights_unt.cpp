#include "host/Declaration_PKG/Rights_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/database/Query.h"
#include "host/database/Transaction.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

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
        {cspPayrollInfo, u"تنظیمات حقوق و دستمزد"_s, {cpOpen, cpPayrollSecondPage}},
        {cspCalcMethod, u"روش های محاسباتی"_s, {cpOpen, cpNew, cpEdit, cpDelete}},
        {cspTax, u"جداول مالیاتی"_s, {cpOpen, cpNew, cpEdit, cpDelete}},
        {cspCalender, u"تقویم کاری"_s, {cpOpen, cpNew, cpEdit, cpDelete}},
        {cspStaff, u"کارمندان"_s, {cpOpen, cpNew, cpEdit, cpDelete, cpStaffFamilyPage}},
        {cspFiscal, u"مزایا"_s, {cpOpen, cpNew, cpEdit, cpDelete}},
        {cspDeduction, u"کسورات"_s, {cpOpen, cpNew, cpEdit, cpDelete}},
        {cspStaffGroup, u"گروه های کارمندان"_s, {cpNew, cpEdit, cpDelete}},
        {cspFiscalGrp, u"گروه های مزایا"_s, {cpNew, cpEdit, cpDelete}},
        {cspDeductionGrp, u"گروه های کسورات"_s, {cpNew, cpEdit, cpDelete}},
        {cspPerson, u"گروه های اشخاص"_s, {cpNew, cpEdit, cpDelete}},
    };
    return all;
}

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
    for (const TPartRights &row : parts()) {
        const QString then = namesOf(row.part, before);
        const QString now = namesOf(row.part, after);
        if (then != now)
            SetUserEvent(TSoftwarePart(0), cpEdit,
                         u"دسترسی های کاربر «%1» در %2: از %3 به %4"_s.arg(name, row.name, then, now), true,
                         false);
    }
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
        return u"جدید"_s;
    case cpEdit:
        return u"ویرایش"_s;
    case cpDelete:
        return u"حذف"_s;
    case cpPrint:
        return u"چاپ"_s;
    case cpOpen:
        return u"مشاهده"_s;
    case cpPayrollSecondPage:
        return u"صفحه دوم تنظیمات"_s;
    case cpStaffFamilyPage:
        return u"صفحه خانواده"_s;
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
