#pragma once

#include "host/Export.h"

#include <QList>
#include <QString>

#include <optional>

class TConnection;

/// A column of text and what a user wants to put there.
struct TUniqueText {
    QString column;
    QString typed;
};

/// A stored record that holds what a user wants to put into another one.
struct TTwin {
    int code = 0;
    QString title; ///< the record's title columns, joined by blanks
};

/// The record with the smallest code, but for `own`, whose columns all hold the same texts as typed, when both forms of
/// yeh and kaf, the three kinds of digits, case, half-spaces and blanks at the ends make no difference. None when there is
/// no such record, or when nothing visible is typed. Throws TDatabaseError.
KETEBIONPAP_CORE std::optional<TTwin> FindTwin(TConnection &connection, const QString &table,
                                               const QList<TUniqueText> &texts, int own,
                                               const QStringList &titleColumns);

/// The Persian sentence that names it.
KETEBIONPAP_CORE QString TwinText(const TTwin &twin);
