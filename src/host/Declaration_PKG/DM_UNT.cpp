#include "host/Declaration_PKG/DM_UNT.h"

TDM DM;
