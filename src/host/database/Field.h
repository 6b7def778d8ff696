#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

/// What an engine and the dataset on it tell each other.

/// How long one that wants to write waits for the others, unless the connection is told otherwise.
inline constexpr int usualPatience = 5000; // ms

enum class TEngineKind { Embedded, SqlServer };
/// What becomes of a database file that is not there.
enum class TMissingFile { Create, Refuse };

/// One column of an open query.
struct TFieldInfo {
    QString name;
    int width = 0;     ///< characters for text columns, 0 where there is no limit
    QString baseTable; ///< the table behind (also through a view), empty for computed columns
    QString baseColumn;
    bool autoIncrement = false;
    bool readOnly = false; ///< computed, or an auto-increment key
    bool large = false;    ///< pictures and the like; a list reads them one by one, when they are asked for
};

/// A statement ready for an engine: given T-SQL text with "?" and ":Name" places, and their values.
struct TBoundStatement {
    QString text;
    QVariantList values; ///< of the "?" places, in order
    QVariantMap named;   ///< of the ":Name" places, by name without the colon, lower case
};

/// A table as the database has it.
struct TTableInfo {
    QString name;
    QList<TFieldInfo> columns;
    QStringList keys; ///< the columns of the primary key; empty when there is none
};
