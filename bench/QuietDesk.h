#pragma once

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"

#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

/// A clerk at work on an empty database of the measurement's own, or on the given one; messages are taken and counted,
/// not shown.
class QuietDesk : public TMessageService {
public:
    explicit QuietDesk(const QString &database = {})
    {
        connection.openFile(database.isEmpty() ? path() : database);
        DM.ADOConnection1 = &connection;
        UserInfo = TUserInfo{1, u"clerk"_s, u"clerk"_s, true, true};
        if (NoUserYet())
            connection.execute(TStatement("insert into UserAccount(Code,Name,IsAdmin) values(1,'clerk',1)"));
        SetMessageService(this);
    }
    ~QuietDesk() override
    {
        SetMessageService(nullptr);
        DM.ADOConnection1 = nullptr;
    }
    QString path() const { return m_folder.filePath(u"desk.db"_s); }
    TAnswer show(const TMessage &message) override
    {
        failures += message.operation == "MSGCompeletedSuccessfully"_L1 ? 0 : 1;
        return TAnswer::Ok;
    }

private:
    QTemporaryDir m_folder;

public:
    TConnection connection;
    int failures = 0; ///< messages other than that of a save that succeeded
};
