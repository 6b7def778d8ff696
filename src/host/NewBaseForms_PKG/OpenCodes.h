#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"
#include "host/database/DatabaseError.h"

#include <QSet>
#include <QStringList>

/// The codes that the editors of this process have open, and those that they could not give up when they closed.
namespace OpenCodes {

void add(TSoftwarePart part, const QString &code);
void remove(TSoftwarePart part, const QString &code);
KETEBIONPAP_HOST bool contains(TSoftwarePart part, const QString &code);

/// The codes of a part that this workstation has locked.
struct TLocked {
    /// Held by an editor that is open now, here or in another process: its working rows look like rows left behind, but
    /// somebody is at work on them.
    QSet<QString> atWork;
    QStringList left; ///< the others
};
/// Throws TDatabaseError.
TLocked locked(TSoftwarePart part);

/// A closed editor's lock or working rows, which the database would not let go for now: they are given up later, by
/// the clock and by whoever opens an editor next. Errors that waiting does not cure are not taken. The code counts as
/// open until then.
void giveUpLater(TSoftwarePart part, const QString &code, bool rows, const TDatabaseError &error);
/// Tries again what could not be given up. Throws nothing. True when nothing is left to do.
KETEBIONPAP_HOST bool giveUpNow();

} // namespace OpenCodes
