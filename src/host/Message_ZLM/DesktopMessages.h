#pragma once

#include "host/Declaration_PKG/Specialmessages.h"

/// Messages as a user at the screen sees them: dialogs that wait for a key, and balloons that never do. A program
/// without windows writes them to the error output and answers every question with the answer that changes nothing.
class TDesktopMessages : public TMessageService {
public:
    TAnswer show(const TMessage &message) override;
};
