#pragma once

#include "host/Export.h"

#include <QString>

#include <optional>

/// The ledger's chart of accounts: a total account, its assistant, and a detail that any assistant may carry.
enum TAccountLevel : int { alTotal = 0, alAssistant = 1, alDetail = 2 };

/// The codes of one account; 0 where a level is not given.
struct TAccountCode {
    int Kol = 0;     ///< total
    int Moin = 0;    ///< assistant, within its total
    int Tafzili = 0; ///< detail
    bool operator==(const TAccountCode &) const = default;
};

/// The name of an account's code of one level; nothing when the chart has no such code. Throws TDatabaseError.
KETEBIONPAP_CORE std::optional<QString> AccountName(TAccountLevel level, const TAccountCode &account);

/// Lets the user pick a code of one level and puts it into the account; with an assistant comes its total, and only
/// the assistants of the account's total are offered when it has one that is in the chart. False: none chosen.
/// Database errors are told to the user.
bool Select_Account(TAccountLevel level, TAccountCode &account);
