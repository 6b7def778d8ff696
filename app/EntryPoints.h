#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"

#include <QList>
#include <QString>
#include <QStringList>

/// One of the module's exports, as the program offers it.
struct TEntryPoint {
    /// What it takes.
    enum Arguments {
        None,
        SelectTypeFilter,    ///< SelectType, Filter
        KindSelectTypeFilter ///< Kind, SelectType, Filter
    };

    const char *name;
    QString caption;
    const char *key; ///< in the main window; empty where it has none
    int part;        ///< the software part whose right to open is asked, 0 where none is
    Arguments arguments;
    QStringList usualArguments; ///< what the menu calls it with

    bool isSelect() const;
};

namespace EntryPoints {
const QList<TEntryPoint> &all();
/// Null when there is none with this name.
const TEntryPoint *find(const QString &name);
/// "SelectType Filter" and the like; empty where it takes nothing.
QString usage(const TEntryPoint &entry);
/// Whether it can be called with these arguments: an empty text, or one line that says why not.
QString check(const QString &name, const QStringList &arguments);
/// Whether the user who is logged in may open it; tells nobody.
bool mayOpen(const TEntryPoint &entry);
} // namespace EntryPoints
