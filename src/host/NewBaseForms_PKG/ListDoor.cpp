#include "host/NewBaseForms_PKG/ListDoor.h"

#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"

using namespace Qt::Literals::StringLiterals;

bool TListDoor::mayTakeOut() const
{
    if (forAdministrators)
        return HaveAdministration(UserInfo, u"چاپ و خروجی «%1»"_s.arg(title.trimmed()));
    return part == TSoftwarePart(0) || HavePermission(UserInfo, part, cpPrint, false, true, {});
}

void TListDoor::note(const QString &how, qlonglong rows, const QString &where) const
{
    QString text = u"%1 از «%2»، %3 سطر"_s.arg(how, title.trimmed()).arg(rows);
    if (!where.isEmpty())
        text += u" در %1"_s.arg(where);
    SetUserEvent(part, cpPrint, text, false, false);
}

bool TListDoor::letOut(const QString &how, qlonglong rows, const QString &where) const
{
    bool may = false;
    Guarded([&] {
        if (!mayTakeOut())
            return;
        note(how, rows, where);
        may = true;
    });
    return may;
}
