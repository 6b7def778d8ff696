#include "host/Declaration_PKG/Accounts_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"

std::optional<QString> AccountName(TAccountLevel level, const TAccountCode &account)
{
    TStatement statement;
    switch (level) {
    case alTotal:
        statement.sql("select Name from AccountTotal where Kol=").integer(account.Kol);
        break;
    case alAssistant:
        statement.sql("select Name from AccountAssistant where Kol=")
            .integer(account.Kol)
            .sql(" and Moin=")
            .integer(account.Moin);
        break;
    case alDetail:
        statement.sql("select Name from AccountDetail where Tafzili=").integer(account.Tafzili);
        break;
    }
    // The outer select tells an account without a name from a code that is not there.
    const QVariant name = DM.ADOConnection1->scalar(
        TStatement("select isnull(Name,'') from (").append(statement).sql(") as Account"));
    return name.isNull() ? std::nullopt : std::optional(name.toString());
}
