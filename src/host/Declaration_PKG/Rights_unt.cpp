#include "host/Declaration_PKG/Rights_unt.h"

#include <QHash>

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
        {cspCalcMethod, u"روش های محاسباتی"_s, {cpOpen, cpNew, cpEdit, cpDelete, cpPrint}},
        {cspTax, u"جداول مالیاتی"_s, {cpOpen, cpNew, cpEdit, cpDelete, cpPrint}},
        {cspCalender, u"تقویم کاری"_s, {cpOpen, cpNew, cpEdit, cpDelete, cpPrint}},
        {cspStaff, u"کارمندان"_s, {cpOpen, cpNew, cpEdit, cpDelete, cpPrint, cpStaffFamilyPage}},
        {cspFiscal, u"مزایا"_s, {cpOpen, cpNew, cpEdit, cpDelete, cpPrint}},
        {cspDeduction, u"کسورات"_s, {cpOpen, cpNew, cpEdit, cpDelete, cpPrint}},
        {cspStaffGroup, u"گروه های کارمندان"_s, {cpNew, cpEdit, cpDelete, cpPrint}},
        {cspFiscalGrp, u"گروه های مزایا"_s, {cpNew, cpEdit, cpDelete, cpPrint}},
        {cspDeductionGrp, u"گروه های کسورات"_s, {cpNew, cpEdit, cpDelete, cpPrint}},
        {cspPerson, u"گروه های اشخاص"_s, {cpNew, cpEdit, cpDelete, cpPrint}},
    };
    return all;
}

} // namespace

QString SoftwarePartName(TSoftwarePart part)
{
    for (const TPartRights &row : parts())
        if (row.part == part)
            return row.name;
    return QString::number(int(part));
}

QString PermissionName(TPermission right)
{
    static const QHash<int, QString> names = {
        {cpNew, u"جدید"_s},
        {cpEdit, u"ویرایش"_s},
        {cpDelete, u"حذف"_s},
        {cpPrint, u"چاپ"_s},
        {cpOpen, u"مشاهده"_s},
        {cpPayrollSecondPage, u"صفحه دوم تنظیمات"_s},
        {cpStaffFamilyPage, u"صفحه خانواده"_s},
    };
    return names.value(right, QString::number(int(right)));
}

const QList<TRightName> &AllRights()
{
    static const QList<TRightName> all = [] {
        QList<TRightName> rights;
        for (const TPartRights &row : parts())
            for (const TPermission right : row.rights)
                rights.append({{row.part, right}, row.name, PermissionName(right)});
        return rights;
    }();
    return all;
}
