#include "host/Utility_ZLM/PrivateFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

const auto userOnly = QFile::ReadOwner | QFile::WriteOwner;

} // namespace

bool PrivateFile::make(const QString &fileName)
{
    QFile::remove(fileName);
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly, userOnly);
}

bool PrivateFile::keep(const QString &fileName)
{
    const QString folder = QFileInfo(fileName).absolutePath();
    if (!QFileInfo::exists(folder)) {
        if (!QDir().mkpath(folder))
            return false;
        QFile::setPermissions(folder, userOnly | QFile::ExeOwner);
    }
    QFile file(fileName);
    return file.open(QIODevice::ReadWrite, userOnly) && file.setPermissions(userOnly);
}
