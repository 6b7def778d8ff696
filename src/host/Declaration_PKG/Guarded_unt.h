#pragma once

#include "host/Export.h"

#include <functional>

/// The one way in which the user is told what went wrong.

/// Tells about the exception that is being handled, and so belongs into a catch block: a database error, which the
/// connection's lastError keeps, and an encrypted backup that is refused by their own sentences, memory that ran out as TellLowMemory does, anything else as a fault
/// of the program.
KETEBIONPAP_CORE void TellFault();
/// Runs work that may meet a fault and tells the user about it. False: there was one.
KETEBIONPAP_CORE bool Guarded(const std::function<void()> &work);
