#include "host/database/OdbcDriverFile.h"

#include "host/database/DatabaseError.h"
#include "host/database/Faults.h"

#include <QFileInfo>
#include <QMap>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <memory>
#include <mutex>

using namespace Qt::Literals::StringLiterals;

namespace {

// Beside the sockets of the user's session, where there is such a folder: it is private and gone after a restart.
QString folderName()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const bool usable = !runtime.isEmpty() && QFileInfo(runtime).isDir() && QFileInfo(runtime).isWritable();
    return (usable ? runtime : QStandardPaths::writableLocation(QStandardPaths::TempLocation)) +
           u"/ketebionpap-XXXXXX"_s;
}

/// What the process has in its file: one section for each server that it was told of.
class TDriverFile {
public:
    QString nameOf(const TServerAddress &server, const QString &authorities);

private:
    QString name() const { return m_folder->filePath(u"freetds.conf"_s); }
    void makeFolder();
    QString authoritiesLink(const QString &authorities) const;
    void write() const;

    std::mutex m_mutex;
    std::unique_ptr<QTemporaryDir> m_folder;
    QMap<QString, QString> m_names; ///< by the section's lines
};

// Paths may be longer than the driver's lines, and hold what begins a comment there.
QString TDriverFile::authoritiesLink(const QString &authorities) const
{
    if (authorities.isEmpty())
        return u"system"_s;
    QFile file(authorities);
    if (!file.open(QIODevice::ReadOnly) || !file.readAll().contains("-----BEGIN "))
        throw TDatabaseError(TFault::NoAuthorities, authorities + u": "_s + file.errorString());
    const QString link = m_folder->filePath(u"authorities-%1.pem"_s.arg(m_names.size() + 1));
    QFile::remove(link);
    if (!QFile::link(QFileInfo(authorities).absoluteFilePath(), link))
        Faults::failWithErrno(link);
    return link;
}

void TDriverFile::write() const
{
    QSaveFile file(name());
    QByteArray text;
    for (auto section = m_names.begin(); section != m_names.end(); ++section)
        text += "[" + section.value().toUtf8() + "]\n" + section.key().section(u'\n', 1).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) ||
        file.write(text) != text.size() || !file.commit())
        Faults::failWithErrno(name());
    if (qEnvironmentVariable("FREETDSCONF") != name())
        qputenv("FREETDSCONF", QFile::encodeName(name()));
}

void TDriverFile::makeFolder()
{
    m_names.clear();
    m_folder = std::make_unique<QTemporaryDir>(folderName());
    if (!m_folder->isValid())
        throw TDatabaseError(TFault::CannotOpen, m_folder->errorString());
}

QString TDriverFile::nameOf(const TServerAddress &server, const QString &authorities)
{
    const std::lock_guard lock(m_mutex);
    // The folder of a session may be cleared away under a program that goes on.
    if (!m_folder || !QFile::exists(name()))
        makeFolder();
    // What is in the first line tells sections apart and is not written.
    const QString lines =
        authorities + u"\nhost = "_s + server.host + u'\n' +
        (server.port > 0 ? u"port = %1\n"_s.arg(server.port) : QString()) +
        (server.instance.isEmpty() ? QString() : u"instance = %1\n"_s.arg(server.instance)) +
        u"encryption = require\ncheck certificate hostname = yes\n"_s;
    QString key = lines + u"ca file = "_s;
    for (auto known = m_names.begin(); known != m_names.end(); ++known) {
        if (known.key().startsWith(key) && (authorities.isEmpty() || QFile::exists(authorities)))
            return known.value();
    }
    key += authoritiesLink(authorities) + u'\n';
    const QString section = u"ketebionpap-%1"_s.arg(m_names.size() + 1);
    m_names.insert(key, section);
    write();
    return section;
}

} // namespace

QString OdbcDriverFile::textFor(const TOdbcConnectionString &string, const TServerAddress &server)
{
    using Driver = TOdbcConnectionString::Driver;
    if (string.driver() != Driver::FreeTds || string.privacy() != TLinePrivacy::Checked ||
        server.host.isEmpty())
        return string.forDriver(server);
    for (const QString &text : {server.host, server.instance}) {
        if (text.contains(u'\n') || text.contains(u'#') || text.contains(u';'))
            throw TDatabaseError(TFault::NoServer, u"no server has such a name"_s);
    }
    static TDriverFile file;
    return string.forDriver(server, file.nameOf(server, string.authorities()));
}
