#include "host/database/OdbcHandles.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace {

struct TNativeFault {
    int native;
    TFault fault;
};

// The server's message numbers that a user can act on; an earlier one counts before a later one.
const TNativeFault nativeFaults[] = {
    {1205, TFault::Deadlock}, // chosen as the deadlock victim
    {1222, TFault::Locked},   // lock request time out
    {2627, TFault::Refused},  // a second primary or unique key
    {2601, TFault::Refused},  // a second row in a unique index
    {547, TFault::Refused},   // a reference or a check
    {515, TFault::Refused},   // null where none may be
    {8115, TFault::Refused},  // a number too great for its column
    {8114, TFault::Refused},  // a text that is no number
    {245, TFault::Refused},   // the same
    {220, TFault::Refused},   // a small number's overflow
    {3609, TFault::Refused},  // a trigger ended the transaction
    {50000, TFault::Refused}, // a trigger's own words
    {8152, TFault::TooLong},  // text would be cut
    {2628, TFault::TooLong},  // the same, with the column's name
    {1105, TFault::DiskFull}, // no room in the file group
    {9002, TFault::DiskFull}, // no room in the log
    {3906, TFault::ReadOnly}, // read-only database
    // What passes by itself: the database comes up, or another server takes it over.
    {4221, TFault::ChangingOver},  // log-in waits for the versions of rows
    {40613, TFault::ChangingOver}, // not available at the moment
    {976, TFault::ChangingOver},   // the other server's copy serves
    {978, TFault::ChangingOver},   // this copy takes readers only
    {983, TFault::ChangingOver},   // its role is being decided
    // A refused database is followed by a refused login.
    {4060, TFault::NoSuchDatabase}, // cannot open the database
    {916, TFault::NoSuchDatabase},  // no user of this database
    {911, TFault::NoSuchDatabase},  // no such database
    {18456, TFault::LoginRefused},  // login failed
    {18452, TFault::LoginRefused},  // from an untrusted domain
    {18486, TFault::LoginRefused},  // account locked
    {18487, TFault::LoginRefused},  // password expired
    {18488, TFault::LoginRefused},  // password must be changed
    {229, TFault::NoRight},         // no right on an object
    {230, TFault::NoRight},         // no right on a column
    {262, TFault::NoRight},         // no right to create
    {297, TFault::NoRight},         // no right to act
    {17809, TFault::ServerFull},    // out of connections
    {17142, TFault::NoServer},      // the server is paused
    {6005, TFault::ConnectionLost}, // shutdown in progress
    {596, TFault::ConnectionLost},  // the session was killed
};

// Numbers that only accompany another message.
bool isRemark(const Odbc::TProblem &problem)
{
    return problem.state.startsWith("01"_L1) || problem.native == 3621 || problem.native == 5701 ||
           problem.native == 5703;
}

bool deniesARight(const QString &text)
{
    static const char *const words[] = {"permission denied", "permission was denied", "not have permission",
                                        "must be owner"};
    return std::any_of(std::begin(words), std::end(words), [&text](const char *denial) {
        return text.contains(QLatin1String(denial), Qt::CaseInsensitive);
    });
}

TFault faultOfState(const QString &state, bool connecting)
{
    const TFault lost = connecting ? TFault::NoServer : TFault::ConnectionLost;
    if (state == "28000"_L1)
        return TFault::LoginRefused;
    if (state.startsWith("HYT"_L1) || state == "S1T00"_L1)
        return connecting ? TFault::NoServer : TFault::NoAnswer;
    if (state.startsWith("08"_L1))
        return lost;
    if (state.startsWith("IM"_L1))
        return TFault::NoDriver;
    if (state.startsWith("23"_L1))
        return TFault::Refused;
    if (state == "22001"_L1)
        return TFault::TooLong;
    if (state.startsWith("22"_L1))
        return TFault::Refused;
    if (state == "40001"_L1)
        return TFault::Deadlock;
    if (state.startsWith("42"_L1) || state.startsWith("37"_L1))
        return TFault::BadStatement;
    return connecting ? TFault::CannotOpen : TFault::Other;
}

} // namespace

QList<Odbc::TProblem> Odbc::problemsOf(SQLSMALLINT type, SQLHANDLE handle)
{
    QList<TProblem> problems;
    for (SQLSMALLINT record = 1; record <= 20; ++record) {
        SQLWCHAR state[6] = {};
        SQLWCHAR text[SQL_MAX_MESSAGE_LENGTH * 4] = {};
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        const SQLRETURN code =
            SQLGetDiagRecW(type, handle, record, state, &native, text, SQLSMALLINT(std::size(text)), &length);
        if (!SQL_SUCCEEDED(code))
            break;
        problems.append({QString::fromUtf16(reinterpret_cast<const char16_t *>(state)), native,
                         QString::fromUtf16(reinterpret_cast<const char16_t *>(text))});
    }
    return problems;
}

TFault Odbc::faultOf(const QList<TProblem> &problems, bool connecting)
{
    for (const TNativeFault &entry : nativeFaults) {
        for (const TProblem &problem : problems) {
            if (entry.native == problem.native)
                return entry.fault;
        }
    }
    // Not every driver and server gives these their numbers.
    for (const TProblem &problem : problems) {
        if (problem.text.contains("can't open lib"_L1, Qt::CaseInsensitive))
            return TFault::NoDriver;
        if (problem.text.contains("lock timeout"_L1, Qt::CaseInsensitive))
            return TFault::Locked;
        if (problem.text.contains("deadlock"_L1, Qt::CaseInsensitive))
            return TFault::Deadlock;
        if (problem.text.contains("constraint failed"_L1, Qt::CaseInsensitive))
            return TFault::Refused;
        if (deniesARight(problem.text))
            return TFault::NoRight;
        // Nobody at the other end any more. Amid a statement the number is that of a column that may not be null.
        const int nobodyThere = 233;
        if (problem.native == nobodyThere && (connecting || problem.state.startsWith("08"_L1)))
            return TFault::ChangingOver;
    }
    for (const TProblem &problem : problems) {
        if (!isRemark(problem))
            return faultOfState(problem.state, connecting);
    }
    return connecting ? TFault::CannotOpen : TFault::Other;
}

QString Odbc::textOf(const QList<TProblem> &problems)
{
    QStringList lines;
    for (const TProblem &problem : problems)
        lines.append(u"%1 (%2) %3"_s.arg(problem.state).arg(problem.native).arg(problem.text.trimmed()));
    return lines.isEmpty() ? u"the driver gives no reason"_s : lines.join(u"; "_s);
}
