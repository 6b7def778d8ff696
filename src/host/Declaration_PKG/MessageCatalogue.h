#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"

#include <QList>
#include <QString>
#include <QStringList>

/// The catalogue's numbers, by what they tell. A name that ends in "Code" has a code filled in.
enum TNotification : int {
    ntNothingToPick = 7,
    ntGroupOfAll = 8,
    ntWrongDate = 10,
    ntWrongTime = 11,
    ntWrongPostCode = 12,
    ntWrongEmail = 13,
    ntRangeHoldsDays = 10060,
    ntRangeReversed = 10061,
    ntSingleWithFamily = 10100,
    ntNotForOutputCode = 10120,
    ntNotForOutput = 10121,
    ntZeroAmount = 10122,
    ntBoundsEqual = 10232,
    ntBoundsReversed = 10233,
    ntBracketsOverlap = 10234,
    ntReservedCode = 10249,
    ntRepeatedCode = 10250,
    ntReserved = 10251,
    ntWrongNationalCode = 10310,
    ntEnterAsPerson = 20106
};

/// How long a notification at an input stays.
inline constexpr int noteTime = 3000; // ms

/// The host's numbered notifications and questions, and the sentences of its other messages.
namespace MessageCatalogue {

struct TEntry {
    int number;
    TMessageIconType icon;
    QString text; ///< "%1" ... are filled with the caller's arguments
};

/// All entries, by number.
KETEBIONPAP_CORE const QList<TEntry> &entries();
/// Null when there is no such number.
KETEBIONPAP_CORE const TEntry *find(int number);
/// Fills "%1" ... "%9" in one pass: an argument may hold a "%1" of its own. Arguments are shown on one line, and
/// shortened where they would fill the screen.
KETEBIONPAP_CORE QString fill(const QString &text, const QStringList &arguments);

} // namespace MessageCatalogue
