#include "host/Declaration_PKG/EventChain_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Utility_ZLM/PersianText.h"
#include "host/Utility_ZLM/Sha256.h"
#include "host/database/Query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const int linesAtOnce = 2000;
const int breaksAtMost = 100;
const char columns[] =
    "UserCode, UserName, Com_Index, SoftwarePart, Permission, EventText, EventDate, EventTime, "
    "OfSystem";

/// What is hashed of a line. No text of the log holds the sign that parts its cells.
QString contents(const TEventLine &line)
{
    QByteArray cells = QByteArray::number(line.userCode);
    const auto add = [&cells](const QByteArray &cell) { cells.append('\x1F').append(cell); };
    add(line.userName.toUtf8());
    add(QByteArray::number(line.comIndex));
    add(QByteArray::number(line.part));
    add(QByteArray::number(line.right));
    add(line.text.toUtf8());
    add(line.date.toUtf8());
    add(line.time.toUtf8());
    add(line.ofSystem ? "1" : "0");
    return Sha256::hex(cells);
}

QString linkOf(const QString &before, const TEventLine &line)
{
    return Sha256::hex((before + contents(line)).toLatin1());
}

TEventLine lineOf(const TQuery &query, int row)
{
    return {
        query.valueAt(row, 1).toInt(),    query.valueAt(row, 2).toString(), query.valueAt(row, 3).toInt(),
        query.valueAt(row, 4).toInt(),    query.valueAt(row, 5).toInt(),    query.valueAt(row, 6).toString(),
        query.valueAt(row, 7).toString(), query.valueAt(row, 8).toString(), query.valueAt(row, 9).toBool()};
}

TEventHead readHead()
{
    TQuery query(DM.ADOConnection1, u"Head_QUR"_s);
    query.setStatement("select Link, LineCount from UserEventHead where ID=1");
    query.open();
    if (query.isEmpty())
        return {};
    return {query.valueAt(0, 0).toString(), query.valueAt(0, 1).toLongLong()};
}

} // namespace

QString EventText(const QString &text, int width)
{
    QString clean = text;
    for (QChar &sign : clean) {
        const ushort code = sign.unicode();
        const bool turns = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
        if (sign.category() == QChar::Other_Control || code == 0x2028 || code == 0x2029 || turns)
            sign = u' ';
    }
    return PersianText::cut(clean, width);
}

void AddEventLine(const TEventLine &line)
{
    DM.ADOConnection1->execute(TStatement("update UserEventHead set Link=dbo.EventLink_FNC(Link,")
                                   .text(contents(line))
                                   .sql("), LineCount=LineCount+1 where ID=1 insert into UserEvent(")
                                   .sql(columns)
                                   .sql(", Link) select ")
                                   .integer(line.userCode)
                                   .sql(",")
                                   .text(line.userName)
                                   .sql(",")
                                   .integer(line.comIndex)
                                   .sql(",")
                                   .integer(line.part)
                                   .sql(",")
                                   .integer(line.right)
                                   .sql(",")
                                   .text(line.text)
                                   .sql(",")
                                   .text(line.date)
                                   .sql(",")
                                   .text(line.time)
                                   .sql(",")
                                   .integer(line.ofSystem ? 1 : 0)
                                   .sql(", Link from UserEventHead where ID=1"));
}

TEventCheck CheckEventLog(const TEventHead &known, const std::function<bool(qlonglong, qlonglong)> &progress)
{
    TEventCheck check;
    check.knownHeadFound = known.link.isEmpty();
    // The head first: lines that come meanwhile stand behind it.
    check.head = readHead();
    QString before;
    qlonglong last = 0;
    bool ended = check.head.link.isEmpty();
    TQuery query(DM.ADOConnection1, u"Events_QUR"_s);
    const auto broken = [&](qlonglong id, const QString &date) {
        if (check.breaks.size() < breaksAtMost)
            check.breaks.append({id, date});
    };
    for (;;) {
        query.setStatement(TStatement(u"select top %1 ID, "_s.arg(linesAtOnce))
                               .sql(columns)
                               .sql(", Link from UserEvent where ID>")
                               .integer(last)
                               .sql(" order by ID"));
        query.open();
        for (int row = 0; row < query.recordCount(); ++row) {
            last = query.valueAt(row, 0).toLongLong();
            const TEventLine line = lineOf(query, row);
            const QString link = query.valueAt(row, 10).toString();
            if (link.isEmpty() && check.lines == 0) {
                ++check.older;
                continue;
            }
            if (++check.lines == 1)
                check.since = line.date;
            if (linkOf(before, line) != link)
                broken(last, line.date);
            before = link;
            ended = ended || link == check.head.link;
            check.knownHeadFound = check.knownHeadFound || link == known.link;
        }
        if (query.recordCount() < linesAtOnce)
            break;
        if (progress && !progress(check.lines + check.older, check.older + check.head.lines)) {
            check.finished = false;
            check.knownHeadFound = true; // not looked for to the end
            return check;
        }
    }
    if (!ended)
        broken(0, {});
    return check;
}
