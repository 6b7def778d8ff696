#include "GivenStatements.h"
#include "SourceLiterals.h"

#include "host/database/Dialect.h"
#include "host/database/OdbcText.h"
#include "host/database/Schema.h"
#include "host/database/SqlText.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

// A second reading, by patterns. It is right for texts without comments, whose quotes hold no keywords.
namespace ByPattern {

QRegularExpression pattern(const char *text)
{
    return QRegularExpression(QLatin1String(text), QRegularExpression::CaseInsensitiveOption |
                                                       QRegularExpression::DotMatchesEverythingOption);
}

QString firstTable(const QString &text)
{
    static const auto from = pattern("\\bfrom\\s+\\[?(?:dbo\\]?\\.\\[?)?(\\w+)");
    return from.match(text).captured(1);
}

bool onlyReads(const QString &text)
{
    static const auto reads = pattern("^\\s*select\\b(?!.*\\binto\\b)");
    return reads.match(text).hasMatch();
}

// An insert as a dataset posts it: its table and its columns.
QStringList insertion(const QString &text)
{
    static const auto form =
        pattern("^\\s*insert\\s+into\\s+\\[?(\\w+)\\]?\\s*\\(([^()]*)\\)\\s*values\\s*\\([?,\\s]*\\)\\s*$");
    const auto match = form.match(text);
    if (!match.hasMatch())
        return {};
    QStringList list{match.captured(1)};
    for (const QString &column : match.captured(2).split(u','))
        list.append(column.trimmed().remove(u'[').remove(u']'));
    return list;
}

QString verb(const QString &text)
{
    static const auto word = pattern("^\\s*(\\w+)");
    return word.match(text).captured(1).toLower();
}

// The names of the places, "" for a "?".
QStringList places(QString text)
{
    static const auto quoted = pattern("'[^']*'");
    static const auto place = pattern("\\?|:([a-z_]\\w*)");
    text.remove(quoted);
    QStringList list;
    for (auto match = place.globalMatch(text); match.hasNext();)
        list.append(match.next().captured(1).toLower());
    return list;
}

int textWidth(const QString &type)
{
    static const auto width = pattern("CHAR\\s*\\((\\d+)\\)");
    return width.match(type).captured(1).toInt();
}

} // namespace ByPattern

QString verbOf(const TSqlText &read)
{
    static const char *const words[] = {"", "select", "insert", "update", "delete", "other"};
    return QString::fromLatin1(words[read.verb]);
}

QStringList placesOf(const TSqlText &read)
{
    QStringList names;
    for (const TSqlText::TPlace &place : read.places)
        names.append(place.name);
    return names;
}

// Every statement that stands in the sources or goes through the data modules, those of the schema, and the forms
// that lists and datasets make.
const QStringList &corpus()
{
    static const QStringList list = [] {
        QStringList texts;
        for (const TGivenStatement &given : givenStatements)
            texts.append(QString::fromUtf8(given.text));
        static const auto statement = ByPattern::pattern("^\\s*(select|insert|update|delete)[\\s(]");
        for (const char *folder : {"src", "app"})
            for (const QString &literal : SourceLiterals(QLatin1String(folder)))
                if (statement.match(literal).hasMatch() && !literal.contains(u'%'))
                    texts.append(literal);
        for (const Schema::TStep &step : Schema::steps())
            for (const auto kind : {TEngineKind::Embedded, TEngineKind::SqlServer})
                for (QString batch : Schema::batches(step.script, kind)) {
                    static const QRegularExpression notes(u"--[^\n]*"_s);
                    texts.append(batch.remove(notes));
                }
        for (qsizetype i = 0, given = texts.size(); i < given; ++i)
            if (ByPattern::verb(texts[i]) == u"select") {
                texts += {"select top 2048 [Code] from (" + texts[i] + ") as ListT order by [Code] desc",
                          "select count(*) from (" + texts[i] + ") as ListT where [Code] < ?"};
            }
        texts += {"insert into [Staff]([Code],[Name]) values(?,?)",
                  "insert into [Tax] default values",
                  "insert into [StaffGroup]([Code]) values(?)",
                  "insert into Calender (Title, [Date]) values (?, ?)",
                  "update [Staff] set [Name]=?,[Family]=? where [Code]=?",
                  "update [Staff] set [Name]=? where [Code]=? and [Kind]=?"};
        return texts;
    }();
    return list;
}

// The pattern takes an owner other than dbo for the table.
bool hasOwner(const QString &text)
{
    static const auto from = ByPattern::pattern("\\bfrom\\s+(?!dbo\\.)\\[?\\w+(\\.)?");
    return !from.match(text).captured(1).isEmpty();
}

// The first from with a table is that of a select among the columns: its table is not the rows' one.
bool hasSelectAmongColumns(const QString &text)
{
    static const auto from = ByPattern::pattern("\\bfrom\\s+\\[?\\w");
    static const auto source = ByPattern::pattern("\\bfrom\\s*\\(\\s*select");
    static const auto inner = ByPattern::pattern("\\(\\s*select");
    QString before = text.left(text.indexOf(from));
    return before.remove(source).contains(inner);
}

// All blanks outside of quotes as `blank`; `change` for what stands between.
QString rewritten(const QString &text, const QString &blank, const std::function<QString(QString)> &change)
{
    QString result;
    const QStringList parts = text.split(u'\'');
    for (qsizetype i = 0; i < parts.size(); ++i) {
        if (i > 0)
            result += u'\'';
        QString part = parts[i];
        if (i % 2 == 0) {
            part = change(part);
            static const QRegularExpression blanks(u"\\s+"_s);
            part.replace(blanks, blank);
        }
        result += part;
    }
    return result;
}

// The same statement as somebody else writes it.
QStringList variations(const QString &text)
{
    const auto same = [](const QString &part) { return part; };
    QStringList list{text,
                     rewritten(text, " ", [](const QString &part) { return part.toUpper(); }),
                     rewritten(text, " ", [](const QString &part) { return part.toLower(); }),
                     rewritten(text, " \n\t\r\n ", same),
                     rewritten(text, "/**/ ", same),
                     rewritten(text, " /* insert into A(b) values(?); /* 'x */ delete from :B */ ", same),
                     rewritten(text, " -- it's into; ? :none from Nowhere where\n", same),
                     "-- select from Nowhere ?\n" + text + "/* into",
                     QString(QChar(0xFEFF)) + text};
    static const auto select = ByPattern::pattern("^(\\s*select)(\\s+)(?!top|distinct|all)");
    if (select.match(text).hasMatch()) {
        for (const char *quoted :
             {"'from A into b; delete c ? :d'", "N'it''s from A'", "[from A ? into]", "\"delete :from\""})
            list.append(QString(text).replace(select, "\\1\\2" + QString(quoted) + ", "));
    }
    const QString table = ByPattern::firstTable(text);
    if (!table.isEmpty()) {
        const QRegularExpression from("(\\bfrom\\s+)\\[?(?:dbo\\]?\\.\\[?)?" + table + "\\b(?![\\].])",
                                      QRegularExpression::CaseInsensitiveOption);
        for (const char *form : {"[%1]", "\"%1\"", "dbo.%1", "[dbo].[%1]", "DBO . [%1]"})
            list.append(QString(text).replace(from, "\\1" + QString(form).arg(table)));
    }
    return list;
}

TEST(SqlText, EveryStatementIsReadAsThePatternsReadItHoweverItIsWritten)
{
    int checked = 0;
    int reads = 0;
    int insertions = 0;
    for (const QString &plain : corpus()) {
        const QString verb = ByPattern::verb(plain);
        const QStringList insertion = ByPattern::insertion(plain);
        reads += ByPattern::onlyReads(plain) ? 1 : 0;
        insertions += insertion.isEmpty() ? 0 : 1;
        const qsizetype statements = Dialect::toSqlite(plain).statements.size();
        for (const QString &text : variations(plain)) {
            const TSqlText read = ReadSql(text);
            ++checked;
            SCOPED_TRACE(text.toStdString());
            const bool known = QStringList{"select", "insert", "update", "delete"}.contains(verb);
            ASSERT_EQ(verbOf(read), known ? verb : "other");
            ASSERT_EQ(read.statements, statements);
            ASSERT_EQ(read.onlyReads, ByPattern::onlyReads(plain));
            ASSERT_EQ(placesOf(read), ByPattern::places(plain));
            ASSERT_EQ(read.columns.join(',').toLower(), insertion.mid(1).join(',').toLower());
            if (!insertion.isEmpty()) {
                ASSERT_EQ(read.table.toLower(), insertion[0].toLower());
            }
            if (verb == "select" && !hasSelectAmongColumns(plain) && !hasOwner(plain)) {
                ASSERT_EQ(read.table.toLower().toStdString(),
                          ByPattern::firstTable(plain).toLower().toStdString());
            }
        }
    }
    std::printf("%d texts of %lld statements: %d only read, %d are posted rows\n", checked,
                static_cast<long long>(corpus().size()), reads, insertions);
    EXPECT_GT(corpus().size(), 250);
    EXPECT_GT(checked, 2500);
    EXPECT_GT(reads, 100);
    EXPECT_GE(insertions, 4);
}

TEST(SqlText, TheRowsTableIsNotThatOfASelectAmongTheColumns)
{
    EXPECT_EQ(
        ReadSql("select *, (select Title from Fiscal where Code=p.Code) as T from PayrollInfoDetail as p")
            .table,
        "PayrollInfoDetail");
    EXPECT_EQ(ReadSql("select a from (select (select max(b) from B) as a from ((A)) ) as S").table, "A");
    EXPECT_EQ(ReadSql("select (select count(*) from A), (select count(*) from B)").table, "");
    EXPECT_EQ(ReadSql("select max(a) from base..[T] as t").table, "T");
    int cured = 0;
    for (const QString &text : corpus())
        cured += hasSelectAmongColumns(text) && ByPattern::firstTable(text) != ReadSql(text).table ? 1 : 0;
    EXPECT_GT(cured, 3) << "the sources have such statements";
}

TEST(SqlText, AWrittenTableIsToldWithItsVerb)
{
    for (const char *text : {"delete T where a=1", "Delete From dbo.T", "delete a from T as a where a.b=?",
                             "update [T] set a=? update U set b=?", "insert T(a) select b from U",
                             "INSERT INTO dbo.[T] default values"})
        EXPECT_EQ(ReadSql(text).table, "T") << text;
    EXPECT_EQ(ReadSql("delete from (").table, "");
    EXPECT_EQ(ReadSql("truncate table T").verb, TSqlText::Other);
    EXPECT_EQ(ReadSql(" -- nothing").verb, TSqlText::None);
    EXPECT_EQ(ReadSql("").statements, 0);
}

// Run a second time, it would do something a second time.
TEST(SqlText, ABatchThatBeginsWithASelectButWritesDoesNotOnlyRead)
{
    for (const char *text : {"select 1 delete from T", "select 1; exec P", "select a into B from T",
                             "with A as (select 1 as a) delete from T", "select 1 truncate table T"})
        EXPECT_FALSE(ReadSql(text).onlyReads) << text;
    for (const char *text :
         {"select 1 select 2", "select 'into' as [into], \"delete\" from T", "/* into */ select 1 -- update"})
        EXPECT_TRUE(ReadSql(text).onlyReads) << text;
}

TEST(SqlText, OnlyAnInsertWithAPlaceForEachColumnTellsItsColumns)
{
    EXPECT_EQ(ReadSql("insert into [T] ([a b], C) values (?, ?)").columns, (QStringList{"a b", "C"}));
    for (const char *text :
         {"insert into T(a,b) values(?,0)", "insert into T(a,b) values(?)", "insert into T(a) values(:a)",
          "insert into T(a) select ?", "insert into T values(?)", "insert into T(a) values(?) delete T",
          "insert into T(a) values(?),(?)", "insert into T(a", "insert into T(a) values(?", "insert into T(",
          "insert into T(a,) values(?)", "insert", "insert into"})
        EXPECT_EQ(ReadSql(text).columns, QStringList()) << text;
}

TEST(SqlText, APlaceIsToldWhereItStands)
{
    const QString text = "select '?:a' /* ? */, ? -- :b\n, :Code from [?]";
    QStringList places;
    for (const TSqlText::TPlace &place : ReadSql(text).places)
        places.append(text.mid(place.at, place.size));
    EXPECT_EQ(places, (QStringList{"?", ":Code"}));
    EXPECT_EQ(ReadSql(text).places[1].name, "code");
}

// What a server gets is the text as it was given, with ODBC's places in it.
TEST(SqlText, OnlyANamedPlaceIsWrittenAnewForTheServer)
{
    static const auto named = ByPattern::pattern(":[a-z_]\\w*");
    for (const QString &text : corpus()) {
        QStringList parts = text.split(u'\'');
        for (qsizetype i = 0; i < parts.size(); i += 2)
            parts[i].replace(named, "?");
        ASSERT_EQ(Odbc::placed({text, {}, {}}).text.toStdString(), parts.join(u'\'').toStdString());
    }
    const Odbc::TPlacedText placed =
        Odbc::placed({"-- :a\nselect N'?:b' as [:c], ?, /* ? */ :Code, \":d\" where x in (?,:CODE)",
                      {1, 2},
                      {{"code", 3}}});
    EXPECT_EQ(placed.text.toStdString(),
              "-- :a\nselect N'?:b' as [:c], ?, /* ? */ ?, \":d\" where x in (?,?)");
    EXPECT_EQ(placed.values, (QVariantList{1, 3, 2, 3}));
}

TEST(SqlText, TheWidthOfATextColumnIsReadFromItsType)
{
    for (const char *type :
         {"NVARCHAR(50)", "nvarchar (50)", "CHAR( 7 )", "char(8)", "varchar\t(4000)", "NVARCHAR(MAX)", "INT",
          "DECIMAL(18, 2)", "VARBINARY(MAX)", "FLOAT(53)", "", "NVARCHAR", "NVARCHAR(50) COLLATE ZELMO"})
        EXPECT_EQ(TextWidthOf(type), type == QString("CHAR( 7 )") ? 7 : ByPattern::textWidth(type)) << type;
}

// The engines of two servers may be at work in two threads.
TEST(SqlText, TwoThreadsReadAtOnce)
{
    const auto readMany = [](int first) {
        int right = 0;
        for (int i = first; i < first + 10000; ++i) {
            const TSqlText &read = ReadSql(u"select ? from T%1"_s.arg(i));
            right += read.table == u"T%1"_s.arg(i) && read.places.size() == 1 ? 1 : 0;
        }
        return right;
    };
    int other = 0;
    std::thread thread([&] { other = readMany(5000); });
    const int own = readMany(0);
    thread.join();
    EXPECT_EQ(own, 10000);
    EXPECT_EQ(other, 10000);
}

// What a person half-wrote, or a program cut, is read without harm.
TEST(SqlText, AnyBeginningOfAStatementIsRead)
{
    for (const QString &text : corpus())
        for (qsizetype size = 0; size <= qMin<qsizetype>(text.size(), 300); size += 7) {
            const TSqlText read = ReadSql(text.left(size));
            for (const TSqlText::TPlace &place : read.places)
                ASSERT_LE(place.at + place.size, size);
        }
}

} // namespace
