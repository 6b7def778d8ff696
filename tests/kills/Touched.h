#pragma once

#include "host/Declaration_PKG/ServerRoles_unt.h"

#include <QSet>
#include <QString>

/// What a program's statements do with the tables and views of the embedded file, by the engine's own word: every database
/// that is opened while this lives is watched. What triggers do is theirs, what views read inside is not.
class Touched {
public:
    Touched();
    ~Touched();
    Touched(const Touched &) = delete;
    /// Name, in lower case, and letter of "SIUD", such as "staff S"; since the last call. The file's own book about its
    /// tables is left out: a server has other ways.
    static QSet<QString> take();
};

/// The same of what a role may do; "X" besides.
QSet<QString> Granted(const TServerRole &role);
/// In order, for messages.
std::string Told(const QSet<QString> &deeds);
