#pragma once

#include "host/Export.h"
#include "host/database/Statement.h"

#include <QObject>

#include <functional>
#include <optional>

class TQuery;

/// One thing that a list can be searched by.
struct TSearchItem {
    enum Kind { Text, Digits, Money, Date };
    QString field;
    QString caption;
    Kind kind = Text;
    bool isDefault = false;
};

/// Runs a list's query with the user's filter.
///
/// The list hands over its base statement; the frames set conditions under their names; the screen may add its own.
/// Text is found anywhere in the field, folded on both sides (PersianText::fold); digits by their beginning.
/// "%", "_", "[" and "'" are plain characters.
class KETEBIONPAP_CORE TZelmoSearchManager : public QObject {
    Q_OBJECT
public:
    TZelmoSearchManager(TQuery *listQuery, QObject *parent);

    void SetSQLScript(const TStatement &script);
    void SetItems(const QList<TSearchItem> &items) { m_items = items; }
    const QList<TSearchItem> &Items() const { return m_items; }
    /// The screen's own filter, asked for before every search.
    void SetOwnFilter(std::function<TStatement()> filter) { m_ownFilter = std::move(filter); }
    /// The condition of one frame ("general", "dates"); empty removes it.
    void SetCondition(const QString &frame, const TStatement &condition);

    /// The condition that finds `text` in an item's field; empty for a text without anything to find. Text: anywhere;
    /// digits: numbers that begin with them; money: amounts whose digits begin with the typed amount's, separators
    /// aside; dates: the typed day, or the text anywhere.
    static TStatement ConditionFor(const TSearchItem &item, const QString &text);
    /// The condition for an item's field from..to (text comparison), either end may be empty. Rows without a value
    /// are not in any range.
    static TStatement RangeCondition(const TSearchItem &item, const QString &from, const QString &to);

    /// Runs the list again with script and filters; keeps the current row by its key where it is still listed,
    /// else moves to the last row. Database errors are told to the user and leave the list closed.
    void ExecuteFilter_DataSet();
    /// The same for a filter that the screen built itself, in place of its own filter.
    void ExecuteFilter(const TStatement &ownFilter);
    /// Whether the list without its filters has a row of this key now, whatever was read of it before. Throws
    /// TDatabaseError.
    bool IsStored(qlonglong key) const;
    /// Whether any frame's condition is in force.
    bool IsFiltered() const { return !m_conditions.isEmpty(); }

    TQuery *ListQuery() const { return m_query; }

Q_SIGNALS:
    void executed(); ///< after every search

private:
    void run(const TStatement &ownFilter);
    void rememberRow();
    TQuery *m_query;
    TStatement m_script;
    QList<TSearchItem> m_items;
    std::function<TStatement()> m_ownFilter;
    QList<std::pair<QString, TStatement>> m_conditions;
    std::optional<qlonglong> m_lastKey; ///< outlives a reset of the list
    bool m_running = false;
};
