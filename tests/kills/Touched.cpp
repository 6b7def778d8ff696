#include "kills/Touched.h"

#include <QStringList>

#include <sqlite3.h>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

QSet<QString> seen;
bool watching = false;

int look(void *, int action, const char *table, const char *, const char *, const char *inside)
{
    QChar deed;
    switch (action) {
    case SQLITE_READ:
        deed = u'S';
        break;
    case SQLITE_INSERT:
        deed = u'I';
        break;
    case SQLITE_UPDATE:
        deed = u'U';
        break;
    case SQLITE_DELETE:
        deed = u'D';
        break;
    default:
        return SQLITE_OK;
    }
    const QString name = QString::fromUtf8(table).toLower();
    // A server may ask for the rights of a trigger's tables, too; not for those of a view's.
    const bool own = !inside || QLatin1String(inside).endsWith("_TRG"_L1);
    if (watching && own && !name.startsWith("sqlite_"_L1) && !name.startsWith("pragma_"_L1))
        seen << name + u' ' + deed;
    return SQLITE_OK;
}

int watch(sqlite3 *db, char **, const sqlite3_api_routines *)
{
    sqlite3_set_authorizer(db, look, nullptr);
    return SQLITE_OK;
}

void (*entry())()
{
    return reinterpret_cast<void (*)()>(watch);
}

} // namespace

Touched::Touched()
{
    seen.clear();
    watching = true;
    sqlite3_auto_extension(entry());
}

Touched::~Touched()
{
    sqlite3_cancel_auto_extension(entry());
    watching = false;
}

QSet<QString> Touched::take()
{
    return std::exchange(seen, {});
}

QSet<QString> Granted(const TServerRole &role)
{
    QSet<QString> all;
    for (const TServerGrant &grant : role.grants)
        for (const QChar letter : grant.deeds)
            all << grant.object.toLower() + u' ' + letter;
    return all;
}

std::string Told(const QSet<QString> &deeds)
{
    QStringList list(deeds.begin(), deeds.end());
    list.sort();
    return list.join(u", "_s).toStdString();
}
