#include "app/RightsMatrix_FRM.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Rights_unt.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString partName(int part)
{
    return SoftwarePartName(TSoftwarePart(part));
}

QList<int> allKinds()
{
    QList<int> kinds;
    for (const TRightName &name : AllRights())
        if (!kinds.contains(int(name.right.right)))
            kinds << int(name.right.right);
    return kinds;
}

QString columnOf(int kind)
{
    return u"Right%1"_s.arg(kind);
}

/// The parts, each with the rights that its screens ask for.
QString partsText()
{
    QList<TSoftwarePart> parts;
    for (const TRightName &name : AllRights())
        if (!parts.contains(name.right.part))
            parts << name.right.part;
    QStringList rows;
    for (const TSoftwarePart part : std::as_const(parts)) {
        QString row = u"select %1 as Part"_s.arg(int(part));
        for (const int kind : allKinds()) {
            bool asked = false;
            for (const TRightName &name : AllRights())
                asked = asked || name.right == TRight{part, TPermission(kind)};
            row += u", %1 as Has%2"_s.arg(asked ? 1 : 0).arg(kind);
        }
        rows << row;
    }
    return rows.join(u" union all "_s);
}

/// Where a user has a right from; the first and the last source, should there be several.
QString sourceText(int kind)
{
    const QString from =
        u"from UserRightSource_VW as s where s.UserCode=a.Code and s.SoftwarePart=p.Part and s.Permission=%1"_s
            .arg(kind);
    return u"case when a.IsActive=0 or p.Has%1=0 then N'' when a.IsAdmin=1 then N'مدیر سیستم' "
           "when exists (select m.RoleCode from UserRoleMember as m where m.UserCode=a.Code and m.RoleCode=1) "
           "then (select o.Name from UserRole as o where o.Code=1) "
           "when (select count(*) %2)>1 then (select min(s.Source) %2) + N'، ' + (select max(s.Source) %2) "
           "else isnull((select min(s.Source) %2), N'') end as Right%1"_s.arg(QString::number(kind), from);
}

} // namespace

TRightsMatrix_FRM::TRightsMatrix_FRM()
    : TBaseDock_FRM(fmBrowse, u"جدول دسترسی ها"_s), m_query(DM.ADOConnection1, "List_QUR")
{
    m_query.setKeyField(u"ID"_s);
    QList<TGridColumn> columns = {{"UserName", u"کاربر"_s, 110},
                                  {"Part", u"بخش"_s, 140, true, TGridColumn::Plain, partName}};
    for (const int kind : allKinds())
        columns.append({columnOf(kind), PermissionName(TPermission(kind)), 100});
    BuildList(&m_query, u"Matrix_List_GRD"_s, columns, {{"UserName", u"کاربر"_s, TSearchItem::Text, true}});
    BuildUsualLayout(u"جدول دسترسی ها"_s);
    KeepToAdministrators();
    BuildButtons(false, true);
    for (TSmartButton_ZLM *button : {New_BTN, EDit_BTN, Del_BTN})
        button->hide();
    resize(1000, 640);
}

void TRightsMatrix_FRM::SetListText()
{
    QStringList sources;
    for (const int kind : allKinds())
        sources << sourceText(kind);
    m_query.setStatement(
        u"select a.Code*1000+p.Part as ID, a.Name as UserName, p.Part, %1 from UserAccount as a cross join (%2) as p"_s
            .arg(sources.join(u", "_s), partsText()));
}
