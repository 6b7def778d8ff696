#pragma once

#include "host/Export.h"

#include <QString>

/// Processes as the lock table knows them. Nothing here throws.

/// What this process is known by: machine, start of the machine, space of process numbers, number and start time, as
/// one text of at most 100 characters. Its number alone comes round again, and each container counts its own.
KETEBIONPAP_CORE QString ThisProcess();
/// Whether a lock or a note with this number and mark (empty: of an earlier version) is this process's.
bool IsThisProcess(qint64 processId, const QString &process);
/// Whether another process runs, as far as can be known here: one of another machine or of another space of process
/// numbers counts as running. False for this process, and for one that is not known at all (number 0, no mark).
/// A mark that is empty is that of an earlier version's lock: the number and the program's file tell then.
KETEBIONPAP_CORE bool RunsHere(qint64 processId, const QString &process = {});
