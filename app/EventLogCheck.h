#pragma once

#include "host/Declaration_PKG/EventChain_unt.h"

#include <QString>

class QWidget;

/// How the check of the event log ended.
struct TEventLogVerdict {
    bool finished = false; ///< false: stopped, or an error that was told
    TEventCheck check;
};

/// Checks the event log of the session's database, with progress over `parent` (stopped by Esc), against the end that
/// this workstation saw last. One that is whole is kept as the end seen last.
TEventLogVerdict CheckEventLogWithProgress(QWidget *parent);
/// Keeps an end of the log as the one seen last; an error is told.
void KeepSeenHead(const TEventHead &head);
/// The result in Persian: whole, how many lines since when; or where it is broken, and what is to be done.
QString EventCheckText(const TEventCheck &check);
/// The same in English, in lines, for the command line.
QString EventCheckReport(const TEventCheck &check);
