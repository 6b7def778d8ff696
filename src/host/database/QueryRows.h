#pragma once

#include "host/database/Connection.h"
#include "host/database/Engine.h"

#include <QCache>

/// The rows behind an open query: all of them, or (with a key field) their keys and the pages that were asked for.
///
/// A long list in key order opens with its number of rows and the keys of its last pages only, so that opening costs the
/// same for any length; the keys before those are read when a row of them is asked for. Rows that were seen keep their
/// places then, whatever other users have added or deleted meanwhile.
class TQueryRows {
public:
    struct TColumns {
        QList<TFieldInfo> fields;
        bool anyLarge = false;
        static TColumns of(const QList<TFieldInfo> &fields);
        /// Whatever the case; of two columns with one name the first one. -1: none.
        int indexOf(const QString &name) const;
    };
    struct TSource {
        TConnection *connection = nullptr;
        TStatement statement;
        QVariantMap named;
        QString keyField; ///< empty: all rows are read
        QString orderField;
        Qt::SortOrder order = Qt::AscendingOrder;
        TColumns columns; ///< where they are known; empty: they are asked for
    };

    /// One request on the way to a row: `read` gets what comes, in whatever thread, then `take` brings it in. What changed
    /// meanwhile makes `take` do nothing.
    struct TStep {
        TStatement statement;
        std::function<void(TCursor &)> read;
        std::function<void()> take;
    };

    /// Reads the rows, or the keys.
    explicit TQueryRows(const TSource &source);

    int count() const { return windowed() ? m_count : int(m_rows.size()); }
    const QList<TFieldInfo> &fields();
    /// The columns as far as they were needed: empty when no row was read yet.
    const TColumns &knownColumns() const { return m_columns; }
    int fieldIndex(const QString &name);
    QVariant value(int row, int field);
    /// Whether the row is given without a request; its large columns are not.
    bool isHere(int row) const;
    /// The next request that a row waits for; only for one that is not here.
    TStep nextStep(int row);
    TBoundStatement bound(const TStatement &statement) const;
    QVariantList row(int row);
    qlonglong keyAt(int row);
    int rowOfKey(qlonglong key);
    /// The first row of a windowed list that a condition on its columns fits; -1 for none.
    int find(const TStatement &condition);
    bool windowed() const { return !m_source.keyField.isEmpty(); }

    // After a post.
    int append(const QVariantList &values, qlonglong key);
    void replace(int row, const QVariantList &values);

private:
    using TPage = QList<QVariantList>;
    void run(const TStep &step);
    TStep allKeys();
    TStep keysBefore();
    TStep columns();
    TStep pageStep(int number);
    TStatement wrapped(const QString &before, const QString &after) const;
    QString orderClause() const;
    void readAll();
    QList<qlonglong> readKeys();
    TStatement keysStatement() const;
    void readFromEnd();
    bool hasKey(qlonglong key);
    void needKeys();
    void takeAllKeys(QList<qlonglong> keys);
    void takeKeysBefore(QList<qlonglong> keys);
    TPage *page(int number);
    int pageOf(int row) const { return (m_count - 1 - row) / m_pageRows; }
    int firstOf(int page) const;
    QVariantList &held(int row);
    void setFields(const QList<TFieldInfo> &fields);
    /// What a page reads of its rows: everything but the large columns, which stand as nulls.
    QString pageColumns() const;
    QVariant largeValue(int row, int field);

    TSource m_source;
    const int m_pageRows;
    TColumns m_columns;
    QList<QVariantList> m_rows;
    int m_count = 0;
    int m_tailFrom = 0;      ///< the row that m_tail begins with
    QList<qlonglong> m_tail; ///< the last keys, while the others are not read
    QList<qlonglong> m_keys;
    QCache<int, TPage> m_pages;
    qlonglong m_largeKey = 0; ///< the row that m_large belongs to
    QHash<int, QVariant> m_large;
};
