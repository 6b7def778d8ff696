#include "host/Declaration_PKG/WorkingRows_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Process_unt.h"
#include "host/database/Query.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Where a part's rows stand; the names are empty when it has no working rows.
struct TWorkingTable {
    QString name;
    QString stored;
    QString codeColumn;
};

bool isName(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c.isDigit() || c == u'_';
    });
}

TWorkingTable tableOf(TSoftwarePart part)
{
    TQuery query(DM.ADOConnection1, u"WorkingTable_QUR"_s);
    query.setStatement(TStatement("select TableName, StoredName, CodeColumn from WorkingTable where Status=")
                           .integer(int(part)));
    query.open();
    if (query.isEmpty())
        return {};
    const TWorkingTable table{query.asString(u"TableName"_s), query.asString(u"StoredName"_s),
                              query.asString(u"CodeColumn"_s)};
    for (const QString &name : {table.name, table.stored, table.codeColumn})
        if (!isName(name))
            throw TDatabaseError(TFault::BadStatement, u"not a name: "_s + name);
    return table;
}

/// A statement on the rows of one code: "select * from", "delete from".
TStatement ofCode(const char *verb, const QString &name, const TWorkingTable &table, const QString &code)
{
    return TStatement(u"%1 %2 where %3="_s.arg(QLatin1String(verb), name, table.codeColumn)).integer(code);
}

/// The rows under a code as texts, in the order of their contents; the columns that both tables have.
QStringList contents(const QString &name, const QString &other, const TWorkingTable &table,
                     const QString &code)
{
    TQuery columns(DM.ADOConnection1, u"Columns_QUR"_s);
    columns.setStatement(u"select * from %1 where 1=0"_s.arg(other));
    columns.open();
    TQuery query(DM.ADOConnection1, u"Rows_QUR"_s);
    query.setStatement(ofCode("select * from", name, table, code));
    query.open();
    QStringList rows;
    for (int row = 0; row < query.recordCount(); ++row) {
        QStringList cells;
        for (const TFieldInfo &field : columns.fields())
            if (const int index = query.fieldIndex(field.name); index >= 0)
                cells << query.valueAt(row, index).toString();
        rows << cells.join(QChar(0));
    }
    rows.sort();
    return rows;
}

TStatement noteOf(const char *beginning, TSoftwarePart part, const QString &code)
{
    return TStatement(beginning).integer(int(part)).sql(" and Code=").integer(code);
}

} // namespace

int CountWorkingRows(TSoftwarePart part, const QString &code)
{
    const TWorkingTable table = tableOf(part);
    if (table.name.isEmpty())
        return 0;
    return DM.ADOConnection1->scalar(ofCode("select count(*) from", table.name, table, code)).toInt();
}

bool WorkingRowsDiffer(TSoftwarePart part, const QString &code)
{
    const TWorkingTable table = tableOf(part);
    if (table.name.isEmpty())
        return false;
    const QStringList working = contents(table.name, table.stored, table, code);
    return !working.isEmpty() && working != contents(table.stored, table.name, table, code);
}

void DiscardWorkingRows(TSoftwarePart part, const QString &code)
{
    const TWorkingTable table = tableOf(part);
    if (table.name.isEmpty())
        return;
    DM.ADOConnection1->execute(ofCode("delete from", table.name, table, code));
    DM.ADOConnection1->execute(noteOf("delete from WorkingRows where Status=", part, code));
}

TRowsOwner WorkingRowsOwner(TSoftwarePart part, const QString &code, int comIndex)
{
    TQuery query(DM.ADOConnection1, u"Owner_QUR"_s);
    query.setStatement(
        noteOf("select Com_Index, ProcessID, Process from WorkingRows where Status=", part, code));
    query.open();
    if (query.isEmpty())
        return TRowsOwner::Nobody;
    const QString process = query.asString(u"Process"_s);
    if (process == ThisProcess())
        return TRowsOwner::Own;
    const bool left = query.asInteger(u"Com_Index"_s) == comIndex &&
                      !RunsHere(query.value(u"ProcessID"_s).toLongLong(), process);
    return left ? TRowsOwner::Left : TRowsOwner::AtWork;
}

void NoteWorkingRows(TSoftwarePart part, const QString &code, int comIndex)
{
    // The one who was here before is not asked: whoever opens a record last has cleared the rows of the first.
    const TStatement change = TStatement("update WorkingRows set Com_Index=")
                                  .integer(comIndex)
                                  .sql(", UserName=")
                                  .text(UserInfo.Name)
                                  .sql(", ProcessID=")
                                  .integer(QCoreApplication::applicationPid())
                                  .sql(", Process=")
                                  .text(ThisProcess())
                                  .append(noteOf(" where Status=", part, code));
    if (DM.ADOConnection1->execute(change) > 0)
        return;
    try {
        DM.ADOConnection1->execute(
            TStatement(
                "insert into WorkingRows(Status, Code, Com_Index, UserName, ProcessID, Process) values(")
                .integer(int(part))
                .sql(",")
                .integer(code)
                .sql(",")
                .integer(comIndex)
                .sql(",")
                .text(UserInfo.Name)
                .sql(",")
                .integer(QCoreApplication::applicationPid())
                .sql(",")
                .text(ThisProcess())
                .sql(")"));
    } catch (const TDatabaseError &error) {
        if (error.fault() != TFault::Refused)
            throw;
        // Somebody was faster, and is the first of the two now.
        DM.ADOConnection1->execute(change);
    }
}

void ForgetWorkingRows(TSoftwarePart part, const QString &code)
{
    DM.ADOConnection1->execute(
        noteOf("delete from WorkingRows where Status=", part, code).sql(" and Process=").text(ThisProcess()));
}

void LeaveWorkingRows(TSoftwarePart part, const QString &code, int comIndex)
{
    DM.ADOConnection1->execute(TStatement("update WorkingRows set ProcessID=null, Process=null, Com_Index=")
                                   .integer(comIndex)
                                   .append(noteOf(" where Status=", part, code)));
}
