#pragma once

#include "host/Export.h"

#include <QList>
#include <QString>
#include <QVariant>

class TQuery;

/// Where a list stands, by the keys of its rows, so that it stands there again when it was read anew: on the same row; when
/// that one is gone, on the next one that is left, or the one before it at the end.
class KETEBIONPAP_CORE TListPlace {
public:
    /// Of an open query, before it is read anew. `leaving`: positions of rows that are to go.
    TListPlace(const TQuery &query, const QString &keyField, const QList<int> &leaving = {});
    /// Moves the query there; false, and not moved, when none of the rows is left.
    bool restore(TQuery &query) const;

private:
    QString m_keyField;
    QVariantList m_keys; ///< the row's own, then those behind it, then those before it
};
