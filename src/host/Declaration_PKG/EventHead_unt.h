#pragma once

#include "host/Declaration_PKG/EventChain_unt.h"
#include "host/Export.h"

/// The end of the event log as this workstation saw it last, kept in a private file beside its options, one for each
/// database. A log that was made anew as a whole hangs together, but does not have it.

/// Empty: this workstation has checked the log of this database never before.
KETEBIONPAP_CORE TEventHead KnownEventHead();
/// False: it cannot be written.
[[nodiscard]] KETEBIONPAP_CORE bool KeepEventHead(const TEventHead &head);
