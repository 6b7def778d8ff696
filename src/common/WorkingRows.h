#pragma once

#include "host/Export.h"
#include "host/database/Query.h"

#include <QStringList>

#include <functional>

/// The working rows of the record under edit: those that its grid shows, against those that are stored. The table is
/// shared by all who edit, so that the two may part. All functions throw TDatabaseError.
class KETEBIONPAP_CORE TWorkingRows {
public:
    /// `shown`: the query behind the grid, which must hold all columns. `columns`: those that make a row's contents,
    /// without the code.
    TWorkingRows(TQuery *shown, const QString &table, const QString &codeColumn, const QStringList &columns);

    /// Whether the stored rows of the code are no longer those that the grid shows; their order does not count.
    bool Changed(const QVariant &code) const;
    /// Stores the rows that the grid shows under the code, in place of what stands there; all or nothing. The query must
    /// be opened again. `keyFor` gives a row the key that it is stored with, where the key is among the columns (the first
    /// one).
    void PutBack(const QVariant &code, const std::function<QVariant(const QVariant &)> &keyFor = {}) const;

private:
    QList<QVariantList> rowsOf(const TQuery &query) const;
    TQuery *m_shown;
    QString m_table;
    QString m_codeColumn;
    QStringList m_columns;
};
