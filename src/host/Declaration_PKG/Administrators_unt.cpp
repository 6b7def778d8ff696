#include "host/Declaration_PKG/Administrators_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/EventChain_unt.h"
#include "host/Utility_ZLM/PersianText.h"
#include "host/database/Transaction.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const int lookedAt = 1000; // characters of a name that is typed; no column is wider

} // namespace

bool AdministratorIsLeft()
{
    return DM.ADOConnection1
               ->scalar(
                   TStatement("select count(*) from UserAccount where IsActive=1 and (IsAdmin=1 or exists "
                              "(select RoleCode from UserRoleMember where UserCode=UserAccount.Code and "
                              "RoleCode=1))"))
               .toInt() > 0;
}

TLoginResult AsAdministrator(bool asFirst, bool mayLose, const std::function<TLoginResult()> &work)
{
    TTransaction transaction(*DM.ADOConnection1);
    DM.ADOConnection1->execute(TStatement("update UserAccount set IsAdmin=1 where IsAdmin=1 "
                                          "update UserRole set Name=Name where Code=1"));
    if (!asFirst && !IsAdministrator(UserInfo))
        return TLoginResult::NotAdministrator;
    const TLoginResult result = work();
    if (result != TLoginResult::Ok)
        return result;
    if (mayLose && !AdministratorIsLeft())
        return TLoginResult::LastAdministrator;
    transaction.commit();
    return result;
}

void NoteUpkeep(TPermission right, const QString &text)
{
    SetUserEvent(TSoftwarePart(0), right, text, true, false);
}

QString StoredName(const QString &name, int width)
{
    const ushort halfSpace = 0x200C;
    QString seen;
    for (const QChar sign : EventText(name, lookedAt))
        if (sign.category() != QChar::Other_Format || sign.unicode() == halfSpace)
            seen += sign;
    return PersianText::cut(seen.trimmed(), width).trimmed();
}

QString NameKey(const QString &name, int width)
{
    return PersianText::fold(StoredName(name, width)).trimmed();
}
