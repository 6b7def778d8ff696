#pragma once

#include "host/database/OdbcConnectionString.h"

/// The driver's configuration file. FreeTDS checks a certificate only where a section of that file says so, and no word
/// of a connection string does: the program writes one of its own, readable by its user only, and tells the driver of it
/// in the environment (FREETDSCONF). It goes when the program ends.
namespace OdbcDriverFile {

/// The string for the driver and one of the servers, with the section that it needs, if any. Throws TDatabaseError:
/// NoAuthorities when the file of the authorities cannot be read, else why the section cannot be written. Safe in every
/// thread; the first call sets the environment.
KETEBIONPAP_CORE QString textFor(const TOdbcConnectionString &string, const TServerAddress &server);

} // namespace OdbcDriverFile
