#include "host/Component_ZLM/LayoutStore.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QWidget>

namespace {

QSettings file()
{
    const QString folder = IniOptions.FileName.isEmpty()
                               ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                                     QStringLiteral("/ketebionpap")
                               : QFileInfo(IniOptions.FileName).absolutePath();
    return QSettings(folder + QStringLiteral("/layout.ini"), QSettings::IniFormat);
}

QString geometryKey(const QWidget *window)
{
    return LayoutStore::windowKey(window) + QStringLiteral("/geometry");
}

} // namespace

QVariant LayoutStore::value(const QString &key)
{
    return file().value(key);
}

void LayoutStore::setValue(const QString &key, const QVariant &value)
{
    QSettings settings = file();
    // Most windows close as they opened, and every writing waits for the disk.
    if (settings.value(key) != value)
        settings.setValue(key, value);
}

QString LayoutStore::windowKey(const QWidget *window)
{
    return QString::fromLatin1(window->metaObject()->className());
}

void LayoutStore::saveWindow(const QWidget *window)
{
    setValue(geometryKey(window), window->saveGeometry());
}

bool LayoutStore::restoreWindow(QWidget *window)
{
    const QByteArray geometry = value(geometryKey(window)).toByteArray();
    return !geometry.isEmpty() && window->restoreGeometry(geometry);
}
