#include "bench/StaffData.h"

#include "bench/BenchData.h"
#include "host/database/Connection.h"
#include "host/database/Dialect.h"

#include <QBuffer>
#include <QHash>
#include <QImage>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int pageRows = 128;

// Names repeat as they do in a country: a few hundred first names, some thousand family names.
const char employees[] =
    "with recursive n(i) as (select 1 union all select i+1 from n where i<@rows) "
    "insert into Staff(Code,StaffGroup,PersonnelCode,InsuranceNumber,CardNumber,NationalID,Sex,FatherName,IDNumber,"
    "BirthDate,BirthPlace,Department,Degree,Major,Military,IsMarried,AccountNumber,BankTitle,CoDate,Job,Comment,Name,"
    "LastName,Tel1,Mob,Add1,Email,LeaveDate,Employment,PostCode,CreatedTime,CreatedDate,UserCreated,Picture) "
    "select i, 1+i%@groups, 'P'||i, printf('%010d',i), ''||i, printf('%010d',i*7), i%2, 'پدر '||(i%211), ''||(i%9999),"
    "printf('13%02d/%02d/%02d',40+i%40,1+i%12,1+i%29), 'شهر '||(i%300), 'واحد '||(i%90), i%8, 'رشته '||(i%60), i%7,"
    "i/2%2, '0101-'||i, 'ملت', printf('13%02d/%02d/%02d',80+i%20,1+i%12,1+i%29), 'شغل '||(i%40), 'شرح '||i,"
    "'نام'||char(1575+i%24)||(i%331), 'خانواده'||char(1576+i%20)||(i%4999), '021'||i, '0912'||i, 'نشانی '||i,"
    "'a'||i||'@b.ir', case when i%10=0 then '1403/01/01' else '' end, i%11, printf('%010d',i), '08:00', '1403/01/01',"
    "'clerk', null from n";

void exec(sqlite3 *db, const QString &sql)
{
    char *message = nullptr;
    if (sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &message) != SQLITE_OK)
        throw std::runtime_error(message ? message : "sqlite");
}

/// A photograph's worth of JPEG: 600 x 800 dots that do not compress away.
QByteArray photograph()
{
    QImage image(600, 800, QImage::Format_RGB32);
    quint32 noise = 1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            noise = noise * 1664525 + 1013904223;
            const int grey = (x + y) / 8 + int(noise >> 27);
            image.setPixel(x, y, qRgb(grey, grey, 255 - grey));
        }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "jpeg", 80);
    return bytes;
}

void addPhotographs(sqlite3 *db)
{
    const QByteArray jpeg = photograph();
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(db, "update Staff set Picture=?, FingerPrint=? where Code%100=0", -1, &statement,
                       nullptr);
    for (int place : {1, 2})
        sqlite3_bind_blob(statement, place, jpeg.constData(), int(jpeg.size()), SQLITE_STATIC);
    const int code = sqlite3_step(statement);
    sqlite3_finalize(statement);
    if (code != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(db));
}

long run(sqlite3_stmt *statement)
{
    long bytes = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            if (sqlite3_column_type(statement, i) == SQLITE_BLOB)
                continue; // the list does not read its pictures either
            benchmark::DoNotOptimize(sqlite3_column_text(statement, i));
            bytes += sqlite3_column_bytes(statement, i);
        }
    }
    sqlite3_reset(statement);
    return bytes;
}

} // namespace

QString StaffData::database(int count)
{
    static QTemporaryDir folder;
    static QHash<int, QString> made;
    if (made.contains(count))
        return made.value(count);
    const QString path = folder.filePath(u"staff%1.db"_s.arg(count));
    {
        TConnection connection;
        connection.openFile(path);
    }
    sqlite3 *db = BenchData::openRaw(path);
    exec(db, u"begin"_s);
    exec(db, u"with recursive n(i) as (select 1 union all select i+1 from n where i<%1) "
             "insert into StaffGroup(Code,Name) select i, 'گروه '||i from n"_s.arg(groups));
    exec(db, QString::fromUtf8(employees)
                 .replace(u"@rows"_s, QString::number(count))
                 .replace(u"@groups"_s, QString::number(groups)));
    addPhotographs(db);
    exec(db, u"commit"_s);
    exec(db, u"pragma wal_checkpoint(truncate)"_s);
    sqlite3_close(db);
    made.insert(count, path);
    return path;
}

TStatement StaffData::listOf(const TStatement &condition)
{
    return TStatement("select * from (select * from staff_VW) as SearchT where ").append(condition);
}

StaffData::Raw::Raw(int employees, const TStatement &list)
    : m_db(BenchData::openRaw(database(employees))), m_values(list.values())
{
    prepareBoth(Dialect::toSqlite(list.boundText()).statements.value(0));
}

StaffData::Raw::Raw(int employees, const QString &condition) : m_db(BenchData::openRaw(database(employees)))
{
    prepareBoth(u"select * from staff_VW where "_s + condition);
}

StaffData::Raw::~Raw()
{
    sqlite3_finalize(m_count);
    sqlite3_finalize(m_page);
    sqlite3_close(m_db);
}

long StaffData::Raw::read()
{
    return run(m_count) + run(m_page);
}

void StaffData::Raw::prepareBoth(const QString &sql)
{
    m_count = prepare(u"select count(*) from (%1)"_s.arg(sql));
    m_page = prepare(
        u"select * from staff_VW where Code in (select Code from (%1) order by Code desc limit %2)"_s.arg(sql)
            .arg(pageRows));
}

sqlite3_stmt *StaffData::Raw::prepare(const QString &sql)
{
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(m_db, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(m_db));
    for (int i = 0; i < m_values.size(); ++i) {
        const QByteArray text = m_values[i].toString().toUtf8();
        if (m_values[i].typeId() == QMetaType::QString)
            sqlite3_bind_text(statement, i + 1, text.constData(), int(text.size()), SQLITE_TRANSIENT);
        else
            sqlite3_bind_int64(statement, i + 1, m_values[i].toLongLong());
    }
    return statement;
}
