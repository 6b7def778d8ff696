#pragma once

#include "host/Export.h"

#include <QList>
#include <QString>

#include <functional>

/// The event log as a chain: each line carries a link that is made of its contents and of the link before, so that a
/// line that was changed, taken out or put in between is seen. Who can write the database can forge the whole chain
/// anew; whoever kept an earlier head (a backup, another workstation) then sees that, too.

/// What a line says, without the key that the database gives it.
struct TEventLine {
    int userCode = 0;
    QString userName;
    int comIndex = 0;
    int part = 0;
    int right = 0;
    QString text;
    QString date; ///< yyyy/mm/dd, Persian
    QString time; ///< hh:mm:ss
    bool ofSystem = false;
};

/// The end of the chain at a moment.
struct TEventHead {
    QString link; ///< empty: no line hangs in the chain yet
    qlonglong lines = 0;
};

/// A place where the chain does not hold.
struct TEventBreak {
    qlonglong id = 0; ///< of the line that does not fit to what stands before it; 0: the end was taken away
    QString date;
};

struct TEventCheck {
    qlonglong lines = 0;       ///< that hang in the chain
    qlonglong older = 0;       ///< from before the chain; they cannot be checked
    QList<TEventBreak> breaks; ///< the first hundred
    bool knownHeadFound = true;
    bool finished = true; ///< false: ended early; what was read up to there is told
    QString since;        ///< the date of the first line that hangs in the chain
    TEventHead head;
    bool isWhole() const { return breaks.isEmpty() && knownHeadFound; }
};

/// Adds a line at the end, in one batch. Throws TDatabaseError.
KETEBIONPAP_CORE void AddEventLine(const TEventLine &line);

/// Reads the whole log and checks it. `known`: an earlier head, which must still be in the chain; an empty one is not
/// looked for. `progress` is called with the lines read and all lines, and ends the check early when it answers false.
/// Throws TDatabaseError.
KETEBIONPAP_CORE TEventCheck CheckEventLog(const TEventHead &known = {},
                                           const std::function<bool(qlonglong, qlonglong)> &progress = {});

/// A text as it stands in the log, in one line and in its own direction: control signs and signs that turn the
/// direction of what follows become blanks; at most `width` characters.
KETEBIONPAP_CORE QString EventText(const QString &text, int width);
