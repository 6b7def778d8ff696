#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"

#include <QString>

/// Working rows of all parts, for those who give up a code without knowing what kind of rows stand under it. The
/// tables are listed in the database (WorkingTable). All functions throw TDatabaseError.

/// How many working rows stand under a code; 0 for a part that has none.
KETEBIONPAP_CORE int CountWorkingRows(TSoftwarePart part, const QString &code);
/// Whether working rows hold anything but a copy of the saved rows. False when there are none.
KETEBIONPAP_CORE bool WorkingRowsDiffer(TSoftwarePart part, const QString &code);
/// Throws the working rows of a code away, with the note of who opened them.
KETEBIONPAP_CORE void DiscardWorkingRows(TSoftwarePart part, const QString &code);

/// Who opened the working rows of a record that is not locked while it is open.
enum class TRowsOwner {
    Nobody, ///< no note
    Left,   ///< a program of this workstation that runs no more, or left them for later
    Own,    ///< this program
    AtWork  ///< another one that runs, or one of another workstation
};
KETEBIONPAP_CORE TRowsOwner WorkingRowsOwner(TSoftwarePart part, const QString &code, int comIndex);
/// Notes that this program opened the working rows of a code; whoever opens them last has them.
KETEBIONPAP_CORE void NoteWorkingRows(TSoftwarePart part, const QString &code, int comIndex);
/// Takes this program's note back.
KETEBIONPAP_CORE void ForgetWorkingRows(TSoftwarePart part, const QString &code);
/// Makes whatever note there is one of rows that were left behind on a workstation.
void LeaveWorkingRows(TSoftwarePart part, const QString &code, int comIndex);
