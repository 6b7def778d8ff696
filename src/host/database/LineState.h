#pragma once

#include "host/Export.h"

#include <QString>

/// How a line to a server is kept from others.
enum class TLinePrivacy {
    Checked,   ///< encrypted, and the server's certificate is checked
    Unchecked, ///< encrypted, but anybody may be at the other end
    Readable   ///< what is on the line can be read
};

/// The line that a database is reached by.
struct TLineState {
    bool toServer = false; ///< false: a file on this machine
    TLinePrivacy privacy = TLinePrivacy::Checked;
    QString server; ///< as the server calls itself; else as the connection string does
};

/// "رمزشده و تأییدشده" ...
KETEBIONPAP_CORE QString PrivacyText(TLinePrivacy privacy);
/// The same in English, for a terminal.
KETEBIONPAP_CORE QString PrivacyTerm(TLinePrivacy privacy);
