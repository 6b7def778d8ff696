#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"

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
};

/// All locks, by part and code.
QList<TCodeLock> ListCodeLocks();
/// Takes a lock away from whoever holds it, and writes it to the event log. False when it is held no more.
bool ReleaseCodeLock(const TCodeLock &lock);
/// Gives up the locks that programs of this workstation left when they were ended from outside; those of `kept` stay:
/// their working rows are offered for recovery. Returns how many went. Called once at the program's start.
int ReleaseLeftLocks(int comIndex, const QList<TSoftwarePart> &kept = {cspStaff});
/// Whether a process of this machine is another running program of this suite. Its number alone says little:
/// numbers come round again. Throws nothing.
bool RunsHere(qint64 processId);

/// One workstation of the suite.
struct TWorkstation {
    int comIndex = 0;
    QString name;
    QString lastSeen; ///< "1403/09/01 08:05"
};

/// By index.
QList<TWorkstation> ListWorkstations();
/// Registers this workstation under an index; registers it again under the same name. False when another
/// workstation (another name) has the index.
bool RegisterWorkstation(int comIndex, const QString &name);
/// Registers this workstation under IniOptions.Com_Index and OwnWorkstationName(). Where the options are new, or another
/// workstation has their index, it is the next free one, which is kept in the options: for hosts that ask nobody. False:
/// the options could not be written.
bool RegisterOwnWorkstation();
/// The first `count` indexes that no workstation has.
QList<int> FreeWorkstationIndexes(int count = 10);
/// Frees the index of a workstation that is gone, with the locks it holds.
void RemoveWorkstation(int comIndex);
/// The machine's name.
QString ThisMachineName();
/// The workstation's name that the options keep; where they keep none, the machine with its user, since one machine may
/// serve several people with options of their own. Throws nothing.
QString OwnWorkstationName();
/// Keeps a name in the options. False: they could not be written. Throws nothing.
bool KeepWorkstationName(const QString &name);
