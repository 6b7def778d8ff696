#pragma once

#include "host/database/Engine.h"

namespace Odbc {

/// A statement in the words of ODBC: only "?" places, and their values in order.
struct TPlacedText {
    QString text;
    QVariantList values;
};

/// Puts "?" for the ":Name" places of a statement. Places in texts, quoted names and comments are none.
TPlacedText placed(const TBoundStatement &statement);

} // namespace Odbc
