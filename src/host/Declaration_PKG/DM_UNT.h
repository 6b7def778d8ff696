#pragma once

#include "host/Export.h"
#include "host/database/Connection.h"

/// The host's data module: the one connection that every query of the process runs on.
struct TDM {
    TConnection *ADOConnection1 = nullptr;
};
extern KETEBIONPAP_CORE TDM DM;
