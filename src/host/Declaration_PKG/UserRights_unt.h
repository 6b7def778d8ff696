#pragma once

#include "host/Declaration_PKG/Rights_unt.h"
#include "host/Export.h"

#include <QList>

/// Which rights the users hold.

KETEBIONPAP_CORE QList<TRight> RightsOfUser(int code);
/// Replaces the user's rights as a whole, in a transaction, with a line of the event log for each part whose rights
/// change. False: who is logged in is no active administrator now.
[[nodiscard]] KETEBIONPAP_CORE bool SetRightsOfUser(int code, const QList<TRight> &rights);
