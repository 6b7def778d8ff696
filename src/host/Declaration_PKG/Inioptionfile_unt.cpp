#include "host/Declaration_PKG/Inioptionfile_unt.h"

#include "host/Utility_ZLM/PlainIni.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

TIniOptions IniOptions;

namespace {

const auto userOnly = QFile::ReadOwner | QFile::WriteOwner;

QString ordinaryFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/ketebionpap/ketebionpap.ini"_s;
}

QString indexKey()
{
    return u"Workstation/Com_Index"_s;
}

} // namespace

void TIniOptions::load(const QString &fileName)
{
    FileName = fileName.isEmpty() ? ordinaryFile() : fileName;
    bool isNumber = false;
    const int stored = QSettings(FileName, PlainIni::format()).value(indexKey()).toString().toInt(&isNumber);
    IsNew = !isNumber || stored < 1;
    Com_Index = IsNew ? 1 : stored;
}

bool TIniOptions::save() const
{
    const QString name = FileName.isEmpty() ? ordinaryFile() : FileName;
    const QString folder = QFileInfo(name).absolutePath();
    if (!QFileInfo::exists(folder)) {
        if (!QDir().mkpath(folder))
            return false;
        QFile::setPermissions(folder, userOnly | QFile::ExeOwner);
    }
    // Private from its first byte on: QSettings keeps the permissions that it finds.
    QFile file(name);
    if (!file.open(QIODevice::ReadWrite) || !file.setPermissions(userOnly))
        return false;
    file.close();
    QSettings settings(name, PlainIni::format());
    settings.setValue(indexKey(), Com_Index);
    settings.sync();
    return settings.status() == QSettings::NoError && QFile::setPermissions(name, userOnly);
}
