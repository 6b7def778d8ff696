#pragma once

#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Process_unt.h"
#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"

#include <QList>
#include <QString>

/// The locks of all workstations, and the workstations themselves. For administrators and for the application's
/// start. Every function throws TDatabaseError unless its comment says otherwise.

/// One held code.
struct TCodeLock {
    QString code;
    TSoftwarePart part;
    int comIndex = 0;
    QString workstation;  ///< its name; empty when the index is not registered
    QString userName;     ///< who holds it; empty for locks of other programs
    QString lockedAt;     ///< "1403/09/01 08:05"; empty for locks of other programs
    qint64 processId = 0; ///< 0: not known
    QString process;      ///< its mark (ThisProcess); empty for locks of other programs
};

/// What becomes of the working rows under a code whose lock is taken away.
enum class TRowsFate {
    Discard, ///< they are thrown away
    Keep     ///< they stay, with the lock that identifies them, and are offered on this workstation
};

/// All locks, by part and code.
KETEBIONPAP_CORE QList<TCodeLock> ListCodeLocks();
/// Takes a lock away from whoever holds it, and writes it to the event log. False when it is held no more.
KETEBIONPAP_CORE bool ReleaseCodeLock(const TCodeLock &lock, TRowsFate fate = TRowsFate::Discard);
/// Gives up the locks that programs of this workstation left when they were ended from outside, unless rows that are
/// stored nowhere else stand under them: these are offered for recovery. Returns how many went. Called once at the
/// program's start.
KETEBIONPAP_CORE int ReleaseLeftLocks(int comIndex);
/// Whether this very process has the lock.
KETEBIONPAP_CORE bool HoldsCodeLock(const QString &code, TSoftwarePart part, int comIndex);

/// What a save relies on.
struct TSaveGround {
    bool holdsLock = true;
    TStanding standing = TStanding::Holds;
};
/// Both in one read: whether this program holds the lock on `code` (an empty one needs none), and how the user stands
/// who is logged in. Throws TDatabaseError.
KETEBIONPAP_CORE TSaveGround AskSaveGround(const QString &code, TSoftwarePart part, int comIndex,
                                           TPermission right);

/// One workstation of the suite.
struct TWorkstation {
    int comIndex = 0;
    QString name;
    QString lastSeen; ///< "1403/09/01 08:05"
};

/// By index.
KETEBIONPAP_CORE QList<TWorkstation> ListWorkstations();
/// Registers this workstation under an index; registers it again under the same name. False when another
/// workstation (another name) has the index.
KETEBIONPAP_CORE bool RegisterWorkstation(int comIndex, const QString &name);
/// Registers this workstation under IniOptions.Com_Index and OwnWorkstationName(). Where the options are new, or another
/// workstation has their index, it is the next free one, which is kept in the options: for hosts that ask nobody. False:
/// the options could not be written.
KETEBIONPAP_CORE bool RegisterOwnWorkstation();
/// The first `count` indexes that no workstation has.
KETEBIONPAP_CORE QList<int> FreeWorkstationIndexes(int count = 10);
/// How many working rows stand under the codes that a workstation holds.
KETEBIONPAP_CORE int CountWorkingRowsOf(int comIndex);
/// Frees the index of a workstation that is gone, with the locks it holds, and writes it to the event log.
KETEBIONPAP_CORE void RemoveWorkstation(int comIndex, TRowsFate fate = TRowsFate::Discard);
/// The machine's name.
QString ThisMachineName();
/// The workstation's name that the options keep; where they keep none, the machine with its user, since one machine may
/// serve several people with options of their own. Throws nothing.
KETEBIONPAP_CORE QString OwnWorkstationName();
/// Keeps a name in the options. False: they could not be written. Throws nothing.
KETEBIONPAP_CORE bool KeepWorkstationName(const QString &name);
