#include "app/EntryPoints.h"

#include "host/Declaration_PKG/Permission_logs_unt.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct TArgument {
    const char *name;
    bool isInteger;
};

QList<TArgument> argumentsOf(const TEntryPoint &entry)
{
    QList<TArgument> list{{"SelectType", true}, {"Filter", false}};
    if (entry.arguments == TEntryPoint::None)
        list.clear();
    else if (entry.arguments == TEntryPoint::KindSelectTypeFilter)
        list.prepend({"Kind", true});
    return list;
}

} // namespace

bool TEntryPoint::isSelect() const
{
    return QLatin1String(name).startsWith("Select_"_L1);
}

const QList<TEntryPoint> &EntryPoints::all()
{
    using T = TEntryPoint;
    static const QList<TEntryPoint> entries = {
        {"Open_PayRollInfo", u"تنظیمات حقوق و دستمزد"_s, "Ctrl+1", cspPayrollInfo, T::None, {}},
        {"Open_CalculatingMethods", u"روش های محاسباتی"_s, "Ctrl+2", cspCalcMethod, T::None, {}},
        {"Open_TaxList", u"جداول مالیاتی"_s, "Ctrl+3", cspTax, T::None, {}},
        {"Open_WorkCalender", u"تقویم کاری"_s, "Ctrl+4", cspCalender, T::None, {}},
        {"Open_StaffList", u"کارمندان"_s, "Ctrl+5", cspStaff, T::None, {}},
        {"Open_FiscalList", u"مزایا"_s, "Ctrl+6", cspFiscal, T::None, {}},
        {"Open_DeductionList", u"کسورات"_s, "Ctrl+7", cspDeduction, T::None, {}},
        {"Select_Staff", u"انتخاب کارمند"_s, "", cspStaff, T::None, {}},
        {"Select_StaffGroup", u"انتخاب گروه کارمندان"_s, "", 0, T::None, {}},
        {"Select_CalculatingMethods", u"انتخاب روش محاسباتی"_s, "", cspCalcMethod, T::None, {}},
        {"Select_TaxInfo", u"انتخاب جدول مالیاتی"_s, "", cspTax, T::None, {}},
        {"Select_FiscalList", u"انتخاب مزایا"_s, "", cspFiscal, T::SelectTypeFilter, {"1", ""}},
        {"Select_DeductionList", u"انتخاب کسورات"_s, "", cspFiscal, T::SelectTypeFilter, {"1", ""}},
        {"Select_FiscalDeducation",
         u"انتخاب مزایا یا کسورات"_s,
         "",
         cspFiscal,
         T::KindSelectTypeFilter,
         {"0", "1", "0"}},
    };
    return entries;
}

const TEntryPoint *EntryPoints::find(const QString &name)
{
    for (const TEntryPoint &entry : all()) {
        if (name == QLatin1String(entry.name))
            return &entry;
    }
    return nullptr;
}

QString EntryPoints::usage(const TEntryPoint &entry)
{
    QStringList names;
    for (const TArgument &argument : argumentsOf(entry))
        names << QLatin1String(argument.name);
    return names.join(u' ');
}

QString EntryPoints::check(const QString &name, const QStringList &arguments)
{
    const TEntryPoint *entry = find(name);
    if (!entry)
        return u"there is no entry point '%1' (--help lists them)"_s.arg(name);
    const QList<TArgument> wanted = argumentsOf(*entry);
    if (arguments.size() != wanted.size())
        return wanted.isEmpty()
                   ? u"%1 takes no arguments"_s.arg(name)
                   : u"%1 takes %2 arguments: %3"_s.arg(name).arg(wanted.size()).arg(usage(*entry));
    for (qsizetype i = 0; i < wanted.size(); ++i) {
        bool isInteger = true;
        if (wanted[i].isInteger)
            arguments[i].toInt(&isInteger);
        if (!isInteger)
            return u"%1 is an integer, not '%2'"_s.arg(QLatin1String(wanted[i].name), arguments[i]);
    }
    return {};
}

bool EntryPoints::mayOpen(const TEntryPoint &entry)
{
    return entry.part == 0 || HavePermission(UserInfo, TSoftwarePart(entry.part), cpOpen, true, false, {});
}
