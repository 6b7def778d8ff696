#include "host/Declaration_PKG/Inioptionfile_unt.h"

#include "host/Utility_ZLM/PlainIni.h"
#include "host/Utility_ZLM/PrivateFile.h"

#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

TIniOptions IniOptions;

namespace {

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
    // QSettings keeps the permissions that it finds.
    if (!PrivateFile::keep(name))
        return false;
    QSettings settings(name, PlainIni::format());
    settings.setValue(indexKey(), Com_Index);
    settings.sync();
    return settings.status() == QSettings::NoError;
}
