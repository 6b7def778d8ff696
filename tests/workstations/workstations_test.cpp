#include "calcmethod/CalcMethod_DM_UNT.h"
#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "staff/Staff_DM_UNT.h"
#include "support/TestDatabase.h"
#include "support/TestServer.h"
#include "support/TestUser.h"
#include "tax/Tax_DM_UNT.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <csignal>
#include <iostream>

using namespace Qt::Literals::StringLiterals;

// Many workstations on one database: real processes, each with a connection of its own. What each of them did is told
// by its output, and compared with what the database holds in the end.

namespace {

const int processes = 8;
const char whereVariable[] = "WORKSTATION_DATABASE";
const char indexVariable[] = "WORKSTATION_INDEX";
const char countVariable[] = "WORKSTATION_OPERATIONS";

// 10,000 with KETEBIONPAP_TEST_OPERATIONS=10000; few of them in the everyday run.
int operations()
{
    const int wanted = qEnvironmentVariableIntValue("KETEBIONPAP_TEST_OPERATIONS");
    return wanted > 0 ? wanted : 240;
}

/// One workstation's work: a line for each operation that had its effect, and one for each fault that a user would see.
class Workstation {
public:
    Workstation() : m_random(quint32(IniOptions.Com_Index))
    {
        CalcMethod_DM = &m_methods;
        Tax_DM = &m_taxes;
        Staff_DM = &m_staff;
    }
    ~Workstation()
    {
        CalcMethod_DM = nullptr;
        Tax_DM = nullptr;
        Staff_DM = nullptr;
    }

    void work(int count)
    {
        // What had no effect (a lock that another workstation holds) is no operation.
        while (m_told < count) {
            try {
                operation();
            } catch (const TDatabaseError &error) {
                DM.ADOConnection1->RollbackTrans();
                tell("fault", error.what());
            }
        }
    }

private:
    void tell(const char *what, const QString &which)
    {
        ++m_told;
        std::cout << what << ' ' << qPrintable(which) << std::endl;
    }
    void failed(const char *what)
    {
        const auto &error = DM.ADOConnection1->lastError();
        tell("fault", QString(what) + ' ' + (error ? error->what() : "without a reason"));
        DM.ADOConnection1->clearLastError();
    }
    bool lock(int code, TSoftwarePart part, TOperationType operation)
    {
        return OperationOnLockCode_SoftwarePart(QString::number(code), part, IniOptions.Com_Index, operation,
                                                false);
    }
    // As the editors do it: a code that another workstation holds, or has saved meanwhile, is passed over.
    int allot(TSoftwarePart part, const std::function<int()> &newCode, const std::function<bool(int)> &exists)
    {
        for (;;) {
            int code = newCode();
            while (!lock(code, part, otLock))
                code = qMax(newCode(), code + 1);
            if (!exists(code))
                return code;
            lock(code, part, otUnlock);
        }
    }
    void operation()
    {
        switch (m_random.bounded(10)) {
        case 0:
        case 1:
        case 2:
            newMethod();
            break;
        case 3:
        case 4:
            newTax();
            break;
        case 5:
        case 6:
            newEmployee();
            break;
        case 7:
        case 8:
            editMethod();
            break;
        default:
            deleteMethod();
        }
    }
    void newMethod()
    {
        const int code = allot(
            cspCalcMethod, [&] { return m_methods.CalcMethod_GetNewCode(); },
            [&](int code) { return m_methods.CalcMedtho_GetCode(code); });
        TCalcMethod_Mapper method;
        m_methods.CalcMethod_GetById(code, method);
        method = {};
        method._Code = code;
        method._Title = QString::fromUtf8("روش %1 از %2").arg(code).arg(IniOptions.Com_Index);
        method._StaffIns = 7;
        method._EmployerIns = 23;
        if (m_methods.CalcMethod_Insert(method)) {
            tell("new method", QString::number(code));
            m_own.append(code);
        } else {
            failed("new method");
        }
        lock(code, cspCalcMethod, otUnlock);
    }
    void newTax()
    {
        const int code = allot(
            cspTax, [&] { return m_taxes.Tax_GetNewCode(); },
            [&](int code) {
                m_taxes.Tax_GetByID(code);
                return !m_taxes.Get_QUR->isEmpty();
            });
        m_taxes.ClearDataTempDetail(code);
        const bool saved = m_taxes.TmpTax_Insert({code, 0, 1000000, 0, "1"}) &&
                           m_taxes.TmpTax_Insert({code, 1000001, 2000000, 10, "2"}) &&
                           m_taxes.Tax_Insert({code, QString::fromUtf8("جدول %1").arg(code), ""}) &&
                           m_taxes.TaxDetail_Insert(code);
        if (saved)
            tell("new tax", QString::number(code));
        else
            failed("new tax");
        m_taxes.ClearDataTempDetail(code);
        lock(code, cspTax, otUnlock);
    }
    void newEmployee()
    {
        const int code = allot(
            cspStaff, [&] { return m_staff.Staff_GetNewCode(); },
            [&](int code) {
                m_staff.FillDataStaff(code);
                return !m_staff.StaffGet_QUR->isEmpty();
            });
        TStaff_Mapper employee;
        employee._Code = code;
        employee._Name = QString::fromUtf8("نام");
        employee._LastName = QString::number(code);
        // A family member's number is not reserved: when another workstation was faster, the clerk presses the key
        // once more and gets the next number.
        bool saved = false;
        for (int attempt = 1; attempt <= 20 && !saved; ++attempt)
            saved = saveEmployee(code, employee);
        if (saved)
            tell("new employee", QString::number(code));
        else
            failed("new employee");
        m_staff.ClearDataTMPFamily(code);
        lock(code, cspStaff, otUnlock);
    }
    bool saveEmployee(int code, const TStaff_Mapper &employee)
    {
        m_staff.ClearDataTMPFamily(code);
        TFamilly_Mapper child;
        child._ID = m_staff.Family_GetNewCode();
        child._StaffCode = code;
        child._Name = QString::fromUtf8("فرزند");
        m_staff.Family_GetByID(-1);
        if (!m_staff.TmpFamily_Insert(child))
            return false;
        DM.ADOConnection1->BeginTrans();
        try {
            m_staff.FillDataStaff(code);
            if (m_staff.Staff_Insert(employee)) {
                m_staff.Family_Insert(code);
                DM.ADOConnection1->CommitTrans();
                return true;
            }
        } catch (const TDatabaseError &error) {
            DM.ADOConnection1->noteError(error);
        }
        DM.ADOConnection1->RollbackTrans();
        // Whatever else went wrong is told.
        if (const auto &error = DM.ADOConnection1->lastError(); !error || error->fault() != TFault::Refused)
            failed("new employee");
        return false;
    }
    void editMethod()
    {
        const int highest = m_methods.CalcMethod_GetNewCode() - 1;
        if (highest < 1)
            return newMethod();
        const int code = 1 + int(m_random.bounded(quint32(highest)));
        if (!lock(code, cspCalcMethod, otLock))
            return;
        if (m_methods.CalcMedtho_GetCode(code)) {
            TCalcMethod_Mapper method;
            m_methods.CalcMethod_GetById(code, method);
            // Two columns that are always changed together: a half-written row would show.
            const int stamp = int(m_random.bounded(1000u));
            method._StaffIns = stamp;
            method._EmployerIns = 30 - stamp;
            method._Code = code;
            if (m_methods.CalcMethod_Update(method))
                tell("edited method", QString::number(code));
            else if (const auto &error = DM.ADOConnection1->lastError();
                     error && error->fault() == TFault::RowGone)
                DM.ADOConnection1->clearLastError(); // deleted by another workstation, as its user is told
            else
                failed("edited method");
        }
        lock(code, cspCalcMethod, otUnlock);
    }
    void deleteMethod()
    {
        if (m_own.isEmpty())
            return newMethod();
        const int code = m_own.takeAt(int(m_random.bounded(quint32(m_own.size()))));
        if (LocateLockCode_SoftwarePart(QString::number(code), cspCalcMethod, IniOptions.Com_Index, false)) {
            m_own.append(code);
            return;
        }
        if (m_methods.CalcMethod_Delete(code))
            tell("deleted method", QString::number(code));
        else
            failed("deleted method");
    }

    TCalcMethod_DM m_methods{nullptr};
    TTax_DM m_taxes{nullptr};
    TStaff_DM m_staff{nullptr};
    QRandomGenerator m_random;
    int m_told = 0;
    QList<int> m_own;
};

class Workstations : public testing::Test {
protected:
    static std::unique_ptr<QProcess> start(const QString &where, int index, int count, const QString &test)
    {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(whereVariable, where);
        environment.insert(indexVariable, QString::number(index));
        environment.insert(countVariable, QString::number(count));
        process->setProcessEnvironment(environment);
        process->setProcessChannelMode(QProcess::MergedChannels);
        process->start(
            QCoreApplication::applicationFilePath(),
            {"--gtest_filter=WorkstationProcess.DISABLED_" + test, "--gtest_also_run_disabled_tests"});
        return process;
    }

    void workAtOnce(const QString &where)
    {
        TConnection connection;
        TestDatabase::open(connection, where);
        QElapsedTimer timer;
        timer.start();
        std::vector<std::unique_ptr<QProcess>> stations;
        for (int i = 1; i <= processes; ++i)
            stations.push_back(start(where, i, operations() / processes, "Works"));
        QHash<QString, int> balance; // "method 5": saved minus deleted
        int done = 0;
        for (const auto &station : stations) {
            ASSERT_TRUE(station->waitForFinished(3600000));
            const QString said = QString::fromUtf8(station->readAll());
            EXPECT_EQ(station->exitCode(), 0) << said.toStdString();
            for (const QString &line : said.split(u'\n')) {
                EXPECT_FALSE(line.startsWith("fault ")) << line.toStdString();
                const QString what = line.section(u' ', 1, 1) + u' ' + line.section(u' ', 2, 2);
                if (line.startsWith("new "))
                    ++balance[what];
                else if (line.startsWith("deleted "))
                    --balance[what];
                else if (!line.startsWith("edited "))
                    continue;
                ++done;
            }
        }
        std::cout << done << " operations of " << processes << " processes in " << timer.elapsed() << " ms\n";
        EXPECT_EQ(done, operations() / processes * processes);
        const auto check = [&](const QString &what, const QString &table) {
            QStringList expected;
            for (auto entry = balance.cbegin(); entry != balance.cend(); ++entry) {
                if (!entry.key().startsWith(what + u' '))
                    continue;
                EXPECT_TRUE(entry.value() == 0 || entry.value() == 1)
                    << entry.key().toStdString() << entry.value();
                if (entry.value() == 1)
                    expected.append(entry.key().section(u' ', 1));
            }
            TQuery query(&connection, "codes");
            query.setStatement(u"select Code from %1"_s.arg(table));
            query.open();
            QStringList found;
            for (int row = 0; row < query.recordCount(); ++row)
                found.append(query.valueAt(row, 0).toString());
            std::sort(expected.begin(), expected.end());
            std::sort(found.begin(), found.end());
            EXPECT_EQ(found.join(u' ').toStdString(), expected.join(u' ').toStdString())
                << table.toStdString();
        };
        check("method", "CalcMethod");
        check("tax", "TaxMain");
        check("employee", "Staff");
        const auto number = [&](const char *sql) { return connection.scalar(TStatement(sql)).toInt(); };
        EXPECT_EQ(number("select count(*) from CodeLock_TBL"), 0);
        EXPECT_EQ(number("select count(*) from CalcMethod where StaffIns + EmployerIns <> 30"), 0);
        EXPECT_EQ(number("select count(*) from TaxMain where (select count(*) from Tax where "
                         "Tax.TaxMainCode = TaxMain.Code) <> 2"),
                  0);
        EXPECT_EQ(number("select count(*) from Tax where TaxMainCode not in (select Code from TaxMain)"), 0);
        EXPECT_EQ(number("select count(*) from Staff where (select count(*) from StaffFamily where "
                         "StaffFamily.StaffCode = Staff.Code) <> 1"),
                  0);
        EXPECT_EQ(number("select count(*) from TmpTax"), 0);
        EXPECT_EQ(number("select count(*) from tmpStaffFamily"), 0);
    }

    void killAndReturn(const QString &where)
    {
        TConnection connection;
        TestDatabase::open(connection, where);
        const auto victim = start(where, 3, 0, "HoldsALock");
        ASSERT_TRUE(victim->waitForReadyRead(60000));
        while (!victim->readAllStandardOutput().contains("holding"))
            ASSERT_TRUE(victim->waitForReadyRead(60000));
        ::kill(pid_t(victim->processId()), SIGKILL);
        ASSERT_TRUE(victim->waitForFinished(60000));
        const auto number = [&](const char *sql) { return connection.scalar(TStatement(sql)).toInt(); };
        EXPECT_EQ(number("select count(*) from CodeLock_TBL where Com_Index=3"), 2);
        // Another workstation meets the lock; an administrator sees whose it is.
        DM.ADOConnection1 = &connection;
        IniOptions.Com_Index = 1;
        EXPECT_FALSE(OperationOnLockCode_SoftwarePart("71", cspCalcMethod, 1, otLock, false));
        ASSERT_EQ(ListCodeLocks().size(), 2);
        EXPECT_EQ(ListCodeLocks()[0].comIndex, 3);
        EXPECT_EQ(ListCodeLocks()[0].workstation, "third");
        // It returns: what it held goes, but for the employee, whose working rows are offered for recovery.
        const auto returned = start(where, 3, 0, "Returns");
        ASSERT_TRUE(returned->waitForFinished(60000));
        EXPECT_EQ(returned->exitCode(), 0) << returned->readAll().toStdString();
        ASSERT_EQ(ListCodeLocks().size(), 1);
        EXPECT_EQ(ListCodeLocks()[0].part, cspStaff);
        EXPECT_TRUE(OperationOnLockCode_SoftwarePart("71", cspCalcMethod, 1, otLock, false));
        EXPECT_TRUE(OperationOnLockCode_SoftwarePart("71", cspCalcMethod, 1, otUnlock, false));
        EXPECT_TRUE(ReleaseCodeLock(ListCodeLocks()[0]));
        EXPECT_EQ(number("select count(*) from CodeLock_TBL"), 0);
        EXPECT_EQ(number("select count(*) from tmpStaffFamily"), 0);
        DM.ADOConnection1 = nullptr;
    }

    QTemporaryDir folder;
};

// The processes themselves; only ever run by the tests below.
class WorkstationProcess : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(qEnvironmentVariableIsSet(whereVariable)) << "run by the tests of the workstations only";
        TestDatabase::open(connection, qEnvironmentVariable(whereVariable));
        DM.ADOConnection1 = &connection;
        IniOptions.Com_Index = qEnvironmentVariableIntValue(indexVariable);
        SeatUser(TUserInfo{1, "clerk", "clerk", true, true});
    }
    void TearDown() override { DM.ADOConnection1 = nullptr; }
    TConnection connection;
};

TEST_F(WorkstationProcess, DISABLED_Works)
{
    Workstation().work(qEnvironmentVariableIntValue(countVariable));
}

TEST_F(WorkstationProcess, DISABLED_HoldsALock)
{
    ASSERT_TRUE(RegisterWorkstation(3, "third"));
    ASSERT_TRUE(OperationOnLockCode_SoftwarePart("71", cspCalcMethod, 3, otLock, false));
    ASSERT_TRUE(OperationOnLockCode_SoftwarePart("72", cspStaff, 3, otLock, false));
    connection.execute(TStatement("insert into tmpStaffFamily(ID, StaffCode, Name) values(1, 72, 'typed')"));
    std::cout << "holding" << std::endl;
    for (;;)
        ::pause();
}

TEST_F(WorkstationProcess, DISABLED_Returns)
{
    EXPECT_TRUE(RegisterWorkstation(3, "third"));
    EXPECT_EQ(ReleaseLeftLocks(3), 1);
}

TEST_F(Workstations, EightProcessesAtOnceLoseNothingOnAFile)
{
    workAtOnce(folder.filePath("many.db"));
}

TEST_F(Workstations, EightProcessesAtOnceLoseNothingOnAServer)
{
    if (!TestServer::available())
        GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
    const TestServer::Database database;
    workAtOnce(database.connectionString());
}

TEST_F(Workstations, AKilledWorkstationGetsItsLocksBackOnAFile)
{
    killAndReturn(folder.filePath("killed.db"));
}

TEST_F(Workstations, AKilledWorkstationGetsItsLocksBackOnAServer)
{
    if (!TestServer::available())
        GTEST_SKIP() << "no server: KETEBIONPAP_TEST_ODBC is not set";
    const TestServer::Database database;
    killAndReturn(database.connectionString());
}

} // namespace
