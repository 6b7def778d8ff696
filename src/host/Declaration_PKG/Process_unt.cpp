#include "host/Declaration_PKG/Process_unt.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QSysInfo>

#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// The parts of a mark, in order.
enum TMarkPart { Machine, MachineStart, NumberSpace, Number, ProcessStart, PartCount };

QString lineOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()).trimmed() : QString();
}

QString linkOf(const char *path)
{
    char target[256];
    const ssize_t length = ::readlink(path, target, sizeof target);
    return length > 0 ? QString::fromLatin1(target, length) : QString();
}

/// When a process began; empty when there is none, or only its corpse. `name`: its number, or "self".
QString startOf(const QString &name)
{
    const QString stat = lineOf(u"/proc/%1/stat"_s.arg(name));
    // Behind the program's name, which may hold blanks and brackets: the state, and the start as the 20th.
    const QStringList fields = stat.mid(stat.lastIndexOf(u')') + 2).split(u' ');
    const bool dead = fields.first() == u"Z" || fields.first() == u"X";
    return dead ? QString() : fields.value(19);
}

QString digest(const QString &text)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex().left(16));
}

QString programOf(qint64 process)
{
    QString program = QFileInfo(u"/proc/%1/exe"_s.arg(process)).symLinkTarget();
    // A program that was brought up to date while it runs.
    const QString replaced = u" (deleted)"_s;
    if (program.endsWith(replaced))
        program.chop(replaced.size());
    return program;
}

/// Whether the numbers in /proc are those that this process counts with: a container may show another's.
bool seesOwnNumbers()
{
    return linkOf("/proc/self") == QString::number(::getpid());
}

} // namespace

QString ThisProcess()
{
    static const QString mark = [] {
        QString machine = lineOf(u"/etc/machine-id"_s);
        if (machine.isEmpty())
            machine = QSysInfo::machineHostName();
        return QStringList{digest(machine), digest(lineOf(u"/proc/sys/kernel/random/boot_id"_s)),
                           linkOf("/proc/self/ns/pid").remove(u"pid:"_s), QString::number(::getpid()),
                           startOf(u"self"_s)}
            .join(u' ');
    }();
    return mark;
}

bool IsThisProcess(qint64 processId, const QString &process)
{
    return process.isEmpty() ? processId == QCoreApplication::applicationPid() : process == ThisProcess();
}

bool RunsHere(qint64 processId, const QString &process)
{
    if (process.isEmpty()) {
        const qint64 own = QCoreApplication::applicationPid();
        if (processId <= 0 || processId == own)
            return false;
        const QString program = programOf(processId);
        return !program.isEmpty() && program == programOf(own);
    }
    if (process == ThisProcess())
        return false;
    const QStringList its = process.split(u' ');
    const QStringList own = ThisProcess().split(u' ');
    if (its.size() != PartCount || its[Machine] != own[Machine])
        return true;
    if (its[MachineStart] != own[MachineStart])
        return false; // the machine was started anew since
    if (its[NumberSpace] != own[NumberSpace] || !seesOwnNumbers())
        return true;
    return startOf(its[Number]) == its[ProcessStart];
}
