#pragma once

#include "host/Export.h"

#include <QStringList>

/// A question of the host's own: what looks wrong about what the user is about to do, a sentence on each line, and whether
/// to do it all the same. True means yes; No is the default.
KETEBIONPAP_CORE bool MsgGoOnAnyway(const QStringList &doubts, const QString &question);
