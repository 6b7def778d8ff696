#include "host/Declaration_PKG/EventHead_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"
#include "host/Utility_ZLM/PlainIni.h"
#include "host/Utility_ZLM/PrivateFile.h"
#include "host/Utility_ZLM/Sha256.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

const int keyLength = 16; // hexadecimal digits: enough to tell the databases of a workstation apart

QString headFile()
{
    return QFileInfo(IniOptions.FileName).absolutePath() + u"/eventlog.ini"_s;
}

QString databaseKey()
{
    return Sha256::hex(DM.ADOConnection1->displayName().toUtf8()).left(keyLength);
}

} // namespace

TEventHead KnownEventHead()
{
    const QSettings settings(headFile(), PlainIni::format());
    const QString key = databaseKey();
    return {settings.value(key + u"/Link"_s).toString(),
            settings.value(key + u"/Lines"_s).toString().toLongLong()};
}

bool KeepEventHead(const TEventHead &head)
{
    const QString name = headFile();
    if (!PrivateFile::keep(name))
        return false;
    QSettings settings(name, PlainIni::format());
    const QString key = databaseKey();
    settings.setValue(key + u"/Link"_s, head.link);
    settings.setValue(key + u"/Lines"_s, QString::number(head.lines));
    settings.sync();
    return settings.status() == QSettings::NoError;
}
