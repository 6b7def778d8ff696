#pragma once

#include <QHash>
#include <QMap>
#include <QStringList>

#include <functional>

/// The rows of all tables that last, by table.
using TStored = QMap<QString, QString>;

/// One way to store something, as a clerk does it at the screens.
struct TDeed {
    const char *name;
    /// Does it; calls `begin` before the first key that may store something. Done a second time, it types only what is
    /// not there yet.
    std::function<void(const std::function<void()> &begin)> work;
    /// The rows that the database has before.
    QStringList before = {};
    /// What else than all or nothing may stand after a kill, by the given order of a save's steps.
    std::function<bool(const TStored &now, const TStored &before, const TStored &after)> between = {};
    /// Columns to look at where not all of them can be the same in the end: a code that is passed over, for instance.
    QHash<QString, QString> columns = {};
};

/// All there are.
const QList<TDeed> &deeds();
/// The rows as they stand.
TStored storedRows(const TDeed &deed);
/// The data modules of all screens, on DM.ADOConnection1, while this lives.
class DataModules {
public:
    DataModules();
    ~DataModules();
};
