#pragma once

#include "app/CommandLine.h"

class QTextStream;

/// One run of the program with an application that is set up already. Results go to `out`, one plain line for every
/// failure to `err`. Answers the exit status: 0 done, 1 something failed, 2 a wrong argument.
int RunProgram(const TCommandLine &line, QTextStream &out, QTextStream &err);
