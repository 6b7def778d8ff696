#include "interface/desk_host/desk.h"

#include "interface/Clerk.h"

#include "host/Component_ZLM/Appearance.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/database/Connection.h"
#include "host/database/Engine.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

#if defined(__SANITIZE_ADDRESS__)
// The compiler has the function, but not its header.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace {

const QList<int> parts = {801, 802, 803, 804, 805, 806, 813, 815};
const int onlyThis = 1000;
const int allButThis = 2000;

/// Answers every message with what it offers, and keeps nothing but their number.
class TMessages : public TMessageService {
public:
    TMessages() { SetMessageService(this); }
    ~TMessages() override { SetMessageService(nullptr); }
    TAnswer show(const TMessage &message) override
    {
        ++count;
        return message.defaultAnswer;
    }
    int count = 0;
};

struct TDesk {
    ~TDesk() { DM.ADOConnection1 = nullptr; }
    TDesk()
    {
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
        SetUpAppearance(application);
        IniOptions.load();
        connection.openFile(folder.filePath("desk.db"));
        DM.ADOConnection1 = &connection;
        // Nine in ten are refused, which the event log notes: neither its pages nor the disk are looked at here.
        connection.engine().runScript("pragma cache_size=-100; pragma synchronous=OFF");
        const auto run = [this](const QString &sql) { connection.execute(TStatement(sql)); };
        run("insert into CalcMethod(Code,Title) values(8,'m')");
        run("insert into TaxMain(Code,Title) values(4,'t')");
        run("insert into Staff(Code,Name,LastName,StaffGroup) values(12,'n','l',0)");
        run("insert into StaffGroup(Code,Name) values(2,'g')");
        run("insert into Fiscal(Code,Title,GrpCode,Cost,CalcType) values(22,'f',0,10,1)");
        run("insert into Deduction(Code,Title,GrpCode,Cost,CalcType) values(32,'d',0,10,1)");
        const QString grant = "insert into UserRight(UserCode,SoftwarePart,Permission) values(%1,%2,6)";
        const QString account = "insert into UserAccount(Code,Name) values(%1,'%1')";
        for (const int part : parts) {
            run(account.arg(onlyThis + part));
            run(account.arg(allButThis + part));
            run(grant.arg(onlyThis + part).arg(part));
            for (const int other : parts)
                if (other != part)
                    run(grant.arg(allButThis + part).arg(other));
        }
    }

    int argc = 1;
    char name[5] = "desk";
    char *argv[2] = {name, nullptr};
    QTemporaryDir folder;
    QApplication application{argc, argv};
    TConnection connection;
    TMessages messages;
    TClerk clerk;
};

std::unique_ptr<TDesk> desk;

void seat(int code)
{
    UserInfo = TUserInfo{code, "clerk", "clerk", false, true};
}

} // namespace

void desk_open(void)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    desk = std::make_unique<TDesk>();
}

void desk_close(void)
{
    // The data modules that live on are bound to the connection, which goes first.
    const QObjectList children = qApp->children();
    for (QObject *child : children)
        if (child->inherits("TDataModule"))
            delete child;
    desk.reset();
}

void desk_seat_user_with(int part)
{
    seat(onlyThis + part);
}

void desk_seat_user_without(int part)
{
    seat(allButThis + part);
}

void desk_answer_screens_by(desk_answer answer)
{
    desk->clerk.answer = TClerk::Answer(answer);
}

const char *desk_screen_shown(void)
{
    static QByteArray shown;
    shown = std::exchange(desk->clerk.shown, "");
    return shown.constData();
}

int desk_messages(void)
{
    return std::exchange(desk->messages.count, 0);
}

int desk_screens(void)
{
    int count = 0;
    for (const QWidget *widget : QApplication::topLevelWidgets())
        count += qobject_cast<const QDialog *>(widget) ? 1 : 0;
    return count;
}

bool desk_data_module_lives(const char *name)
{
    for (const QObject *child : qApp->children())
        if (qstrcmp(child->metaObject()->className(), name) == 0)
            return true;
    return false;
}

long desk_memory(void)
{
#if defined(__SANITIZE_ADDRESS__)
    return long(__sanitizer_get_current_allocated_bytes() / 1024);
#else
    QFile status("/proc/self/status");
    if (status.open(QIODevice::ReadOnly))
        for (const QByteArray &line : status.readAll().split('\n'))
            if (line.startsWith("VmRSS:"))
                return line.mid(6).simplified().split(' ').first().toLong();
    return -1;
#endif
}
