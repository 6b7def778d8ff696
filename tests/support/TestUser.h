#pragma once

#include "host/Declaration_PKG/Permission_logs_unt.h"

/// Logs a user in, with an account of the name, the code and the flags that are given (made or changed).
void SeatUser(const TUserInfo &user);
