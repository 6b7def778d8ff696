#pragma once

#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"

#include <gtest/gtest.h>

/// A database of the test's own, an administrator at workstation 1, and messages that are recorded.
class Services : public testing::Test {
protected:
    Services()
    {
        IniOptions.Com_Index = 1;
        UserInfo = TUserInfo{1, "admin", "The Administrator", true, true};
    }
    ~Services() override { UserInfo = {}; }

    TestDatabase db;
    ScriptedMessages messages;
};
