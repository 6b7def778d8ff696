#pragma once

#include "host/Export.h"

/// A question to the user, for code that knows no window. Specialmessages.h holds all other messages.
enum class TAnswer { Ok, Yes, No, Cancel };
enum class TMessageButtons { Ok, YesNo, YesNoCancel };

/// A catalogued question.
KETEBIONPAP_CORE TAnswer ShowSmartMessage(int number, TMessageButtons buttons, TAnswer defaultAnswer);
