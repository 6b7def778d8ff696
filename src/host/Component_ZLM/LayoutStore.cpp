#include "host/Component_ZLM/LayoutStore.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Utility_ZLM/PlainIni.h"
#include "host/Utility_ZLM/PrivateFile.h"

#include <QFileInfo>
#include <QScreen>
#include <QStandardPaths>
#include <QWidget>

using namespace Qt::Literals::StringLiterals;

namespace {

QSettings file()
{
    const QString folder =
        IniOptions.FileName.isEmpty()
            ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/ketebionpap"_s
            : QFileInfo(IniOptions.FileName).absolutePath();
    return QSettings(folder + u"/layout.ini"_s, PlainIni::format());
}

// A window's dots are memory: a size far beyond the screens is none that the user arranged.
bool isShowable(const QSize &window, const QSize &screens)
{
    constexpr int longestSide = 16384; // dots
    constexpr qint64 timesTheScreens = 8;
    return window.width() <= longestSide && window.height() <= longestSide &&
           qint64(window.width()) * window.height() <= timesTheScreens * screens.width() * screens.height();
}

QString geometryKey(const QWidget *window)
{
    return LayoutStore::windowKey(window) + u"/geometry"_s;
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
    if (settings.value(key) == value)
        return;
    // A layout names columns and windows of the user alone; QSettings keeps the permissions that it finds.
    PrivateFile::keep(settings.fileName());
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
    const QRect before = window->geometry();
    if (geometry.isEmpty() || !window->restoreGeometry(geometry))
        return false;
    if (isShowable(window->size(), window->screen()->virtualSize()))
        return true;
    window->setWindowState(Qt::WindowNoState);
    window->setGeometry(before);
    return false;
}
