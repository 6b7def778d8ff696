#pragma once

#include "host/Export.h"

/// What is done when the machine has no memory left: a part is kept aside from the start, so that the user can still be
/// told, and save. None of these functions throws.

/// Called once at the program's start.
KETEBIONPAP_CORE void KeepMemoryReserve();
/// Gives the reserve back and tells the user to save and to close something. When there is no reserve left it ends the
/// program in order instead: every screen is left as Esc leaves it, and nothing half is stored.
KETEBIONPAP_CORE void TellLowMemory();
/// Asked before a window is drawn: Qt draws into memory that it could not get, and crashes there. Gives the reserve back,
/// and tells the user when the window stands, or ends the program as TellLowMemory does. False: nothing is to be drawn any
/// more.
KETEBIONPAP_CORE bool MemoryToDraw();
