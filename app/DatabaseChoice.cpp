#include "app/DatabaseChoice.h"

#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Utility_ZLM/PlainIni.h"
#include "host/Utility_ZLM/PrivateFile.h"
#include "host/database/OdbcConnectionString.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString fileKey = u"Database/File"_s;
const QString odbcKey = u"Database/Odbc"_s;

QString settingsFile()
{
    return QFileInfo(IniOptions.FileName).absolutePath() + u"/database.ini"_s;
}

} // namespace

QString TDatabaseChoice::ordinaryFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           u"/ketebionpap/ketebionpap.db"_s;
}

TDatabaseChoice TDatabaseChoice::stored()
{
    const QSettings settings(settingsFile(), PlainIni::format());
    TDatabaseChoice choice{settings.value(fileKey).toString(), settings.value(odbcKey).toString()};
    if (choice.file.isEmpty())
        choice.file = ordinaryFile();
    if (choice.file == ordinaryFile())
        choice.missing = TConnection::Missing::Create;
    return choice;
}

bool TDatabaseChoice::store() const
{
    const QString name = settingsFile();
    if (!PrivateFile::keep(name))
        return false;
    QSettings settings(name, PlainIni::format());
    settings.setValue(fileKey, file == ordinaryFile() ? QString() : file);
    settings.setValue(odbcKey, TOdbcConnectionString(odbc).withoutPassword().text());
    settings.sync();
    return settings.status() == QSettings::NoError;
}
