#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"

#include <QList>
#include <QString>
#include <QStringList>

/// The host's numbered notifications and questions, and the sentences of its other messages.
namespace MessageCatalogue {

struct TEntry {
    int number;
    TMessageIconType icon;
    QString text; ///< "%1" ... are filled with the caller's arguments
};

/// All entries, by number.
const QList<TEntry> &entries();
/// Null when there is no such number.
const TEntry *find(int number);
/// Fills "%1" ... "%9" in one pass: an argument may hold a "%1" of its own. Arguments are shown on one line, and
/// shortened where they would fill the screen.
QString fill(const QString &text, const QStringList &arguments);

} // namespace MessageCatalogue
