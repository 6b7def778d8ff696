#pragma once

#include "host/Export.h"

#include <QString>
#include <QVariant>

class QWidget;

/// What the user arranged: the windows' places and the grids' columns. One file, layout.ini, beside the workstation's
/// options (IniOptions.FileName).
namespace LayoutStore {
KETEBIONPAP_HOST QVariant value(const QString &key);
KETEBIONPAP_HOST void setValue(const QString &key, const QVariant &value);
/// Remembers a window's place and size under its class name.
KETEBIONPAP_HOST void saveWindow(const QWidget *window);
/// Gives a window its remembered place and size. False: none remembered, or none that a screen could show.
KETEBIONPAP_HOST bool restoreWindow(QWidget *window);
/// The name under which a window is remembered.
QString windowKey(const QWidget *window);
} // namespace LayoutStore
