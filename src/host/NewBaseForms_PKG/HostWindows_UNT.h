#pragma once

#include "host/Export.h"

/// Brings the suite's windows to the services below them: messages are shown as dialogs and balloons, and groups of
/// persons are picked from their list, and stay alive while the server is waited for. Called at the start of a program with windows, and by the module for hosts that
/// do not; again without effect.
KETEBIONPAP_HOST void SetUpHostWindows();
