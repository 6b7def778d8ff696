#pragma once

#include "host/Export.h"
#include "host/database/DatabaseError.h"
#include "host/database/OdbcConnectionString.h"

#include <optional>

/// Finds out why a driver that only says "connection failed" was not content with a server: greets the server as the
/// protocol wants it, and looks at the certificate that it shows. Sends no name and no password.
///
/// Nothing where encryption and certificate are as they should be, or nobody answers within `seconds`.
KETEBIONPAP_CORE std::optional<TFault>
WhatIsWrongWithTls(const TServerAddress &server, const QString &authorities, bool checked, int seconds);
