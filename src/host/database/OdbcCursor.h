#pragma once

#include "host/database/OdbcEngine.h"

/// The rows of a statement on the server.
class TOdbcCursor : public TCursor {
public:
    TOdbcCursor(TOdbcEngine &engine, Odbc::TStatementHandle statement, const QString &text);
    ~TOdbcCursor() override;

    bool next() override;
    const QList<TFieldInfo> &fields() const override { return m_fields; }
    QVariant value(int column) override { return m_row.value(column); }

    /// The request holds several selects; without this only the first is read.
    void expectMore() { m_expectsMore = true; }
    /// After the last row: goes on to the rows of the next select of the same request.
    bool nextSelect();
    /// Reads the rows to the end and keeps them, so that another statement may run.
    void keepRest();
    /// The line is gone, and the rows with it.
    void abandon();

private:
    void describe();
    bool fetch();

    TOdbcEngine *m_engine;
    Odbc::TStatementHandle m_statement;
    QString m_text;
    QList<TFieldInfo> m_fields;
    QList<Odbc::TColumn> m_columns;
    QVariantList m_row;
    QList<QVariantList> m_kept;
    qsizetype m_keptAt = 0;
    bool m_atEnd = false;
    bool m_expectsMore = false;
    bool m_hasMore = false; ///< the rows of another select wait
    bool m_lost = false;
};
