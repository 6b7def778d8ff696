#pragma once

#include "host/Declaration_PKG/Specialmessages.h"

/// A question of the application itself, with Yes and No. True: Yes.
bool Ask(const QString &text, TAnswer defaultAnswer = TAnswer::Yes);
/// A sentence of the application itself.
void Tell(const QString &text, TMessageIconType icon = miInformation);
