#pragma once

#include "host/Export.h"
#include "host/database/Connection.h"
#include "host/database/Field.h"

#include <QObject>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <optional>

/// A dataset: a statement, its rows, a current row, and editing of that row.
///
/// Without a key field all rows are read when the query opens (records, look-ups, small lists). With one
/// (setKeyField) the query is a list: opening reads the number of rows and their keys only, and rows are read
/// by page when they are asked for.
/// Field names compare without regard to case. Reads throw TDatabaseError; so does post().
class KETEBIONPAP_CORE TQuery : public QObject {
    Q_OBJECT
public:
    enum class State { Inactive, Browse, Edit, Insert };
    enum LocateOption { Exact = 0, CaseInsensitive = 1, PartialKey = 2 };
    Q_DECLARE_FLAGS(LocateOptions, LocateOption)

    TQuery(TConnection *connection, const QString &name, QObject *parent = nullptr);
    ~TQuery() override;

    /// Closes the query and sets its statement.
    void setStatement(const TStatement &statement);
    const TStatement &statement() const;
    /// Value of a typed parameter ":Name" of the statement.
    void setParam(const QString &name, const QVariant &value);
    /// Makes this query a windowed list whose rows are identified by this integer column. Rows come in the
    /// order of the key unless setOrder says otherwise.
    void setKeyField(const QString &keyField);
    const QString &keyField() const;
    /// Sorts a windowed list in the database by a column of its result; empty returns to key order.
    void setOrder(const QString &field, Qt::SortOrder order = Qt::AscendingOrder);

    void open();
    /// Opens at the row with this key, or at the last row when there is no key or no such row (windowed lists).
    void openAt(const std::optional<qlonglong> &key);
    void close();
    bool active() const;
    State state() const;

    int recordCount() const;
    bool isEmpty() const { return recordCount() == 0; }
    /// Position of the current row, 0-based; -1 when there is none.
    int position() const;
    void moveTo(int position);
    void first();
    void last();
    void next();
    void prior();
    bool eof() const; ///< next() was called on the last row, or there are no rows
    /// Moves to the first row whose field has the value (PartialKey: begins with it; the forms of yeh and kaf and of
    /// the digits are then one, capitals and small letters only with CaseInsensitive). False: not moved.
    bool locate(const QString &field, const QVariant &value, LocateOptions options = Exact);

    const QList<TFieldInfo> &fields() const;
    int fieldIndex(const QString &name) const; ///< -1 when there is no such field
    /// A column of the current row; null when there is no row. "Row": its number, from 1. Throws for an unknown field.
    QVariant value(const QString &field) const;
    QString asString(const QString &field) const { return value(field).toString(); }
    int asInteger(const QString &field) const { return value(field).toInt(); }
    bool asBoolean(const QString &field) const { return value(field).toInt() != 0; }
    double asFloat(const QString &field) const { return value(field).toDouble(); }
    /// A column of any row, read by page.
    QVariant valueAt(int row, int fieldIndex) const;
    /// For who paints rows of a database that does not answer at once (TEngine::answersAtOnce): whether a row is given
    /// without a request, and this field of it. Always, where it does.
    bool isHere(int row, int fieldIndex = -1) const;
    /// Begins to read the page of a row that is not here; cameIn tells when it is, or readFailed. After a failure
    /// nothing is read until the query is opened again or askAgain is called.
    void readSoon(int row);
    void askAgain();
    /// The key of a row of a windowed list, without reading the row.
    qlonglong keyAt(int row) const;
    /// The row with this key; -1 when it is not in the list.
    int rowOfKey(qlonglong key) const;

    /// Begins a new row; setValue fills it, post writes it to the base table.
    void append();
    /// Puts the current row into edit.
    void edit();
    /// Sets a column of the row under edit. Text longer than the column is cut to its width at post.
    void setValue(const QString &field, const QVariant &value);
    /// Writes the row (an insert or an update of the table behind, also behind a view). Read-only columns
    /// are left out. On an error the row stays under edit and TDatabaseError is thrown.
    void post();
    void cancel();

    /// Runs the statement as a command; returns the affected rows.
    int execSql();

    TConnection *connection() const;

Q_SIGNALS:
    void opened();
    void closed();
    void currentChanged(int position);
    void posted();
    void cameIn(); ///< rows that were read with readSoon
    void readFailed(const TDatabaseError &error);

private:
    friend class TRowsToCome;
    struct Private;
    std::unique_ptr<Private> d;
};
Q_DECLARE_OPERATORS_FOR_FLAGS(TQuery::LocateOptions)
