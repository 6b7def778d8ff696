#include "RawDatabase.h"

#include <chrono>

namespace {

QString sqlite(const char *tsql)
{
    return Dialect::toSqlite(QString::fromUtf8(tsql)).statements.join("; ");
}

TEST(Dialect, IsnullOfTwoBecomesIfnull)
{
    EXPECT_EQ(sqlite("select isnull(max(code),0)+1 from CalcMethod"),
              "select ifnull(max(code),0)+1 from CalcMethod");
    EXPECT_EQ(sqlite("Select IsNull(Max(Code),0)As Code From Staff"),
              "Select ifnull(Max(Code),0)As Code From Staff");
    EXPECT_EQ(sqlite("select [isnull] from T where a='isnull(1,2)'"),
              "select [isnull] from T where a='isnull(1,2)'");
}

TEST(Dialect, DeleteWithoutFromGetsIt)
{
    EXPECT_EQ(sqlite("Delete TaxMain where Code in (?,?)"), "Delete from TaxMain where Code in (?,?)");
    EXPECT_EQ(sqlite("Delete From CodeLock_TBL Where (Status=?)"),
              "Delete From CodeLock_TBL Where (Status=?)");
    EXPECT_EQ(sqlite("delete [T]"), "delete from [T]");
    EXPECT_EQ(sqlite("delete a from T as a where a.b=1"), "delete from T as a where a.b=1");
}

TEST(Dialect, InsertWithoutIntoGetsIt)
{
    EXPECT_EQ(sqlite("insert T(a) values(?)"), "insert into T(a) values(?)");
    EXPECT_EQ(sqlite("INSERT INTO T values(?)"), "INSERT INTO T values(?)");
}

TEST(Dialect, AnAliasBeforeItsExpressionGoesBehindIt)
{
    EXPECT_EQ(
        sqlite(
            "SELECT a.*, Sex = CASE sex WHEN 0 THEN 'm' END,Death= case d when 1 then 'y' end FROM T AS a"),
        "SELECT a.*, CASE sex WHEN 0 THEN 'm' END as Sex, case d when 1 then 'y' end as Death FROM T AS a");
    EXPECT_EQ(sqlite("select [x y]=f(a,b), z = (select max(q) from U where q=1) from T"),
              "select f(a,b) as [x y], (select max(q) from U where q=1) as z from T");
    EXPECT_EQ(sqlite("select distinct n='a'"), "select distinct 'a' as n");
}

TEST(Dialect, AnEqualsSignElsewhereIsAComparison)
{
    for (const char *text :
         {"update T set a=1, b=2 where c=3", "select a from T where b=1",
          "select case when a=1 then 2 end from T", "select (a) from T as x where (x.a=1)"})
        EXPECT_EQ(sqlite(text), text);
}

TEST(Dialect, OwnersAreLeftOut)
{
    EXPECT_EQ(sqlite("SELECT dbo.GetUinqueCode_FNC(?)"), "SELECT GetUinqueCode_FNC(?)");
    EXPECT_EQ(sqlite("select * from [dbo].[T] where a='dbo.x'"), "select * from [T] where a='dbo.x'");
    EXPECT_EQ(sqlite("select * from a.dbo"), "select * from a.dbo");
}

TEST(Dialect, HintsAreLeftOut)
{
    EXPECT_EQ(sqlite("select * from T with (updlock, holdlock) where a=1"), "select * from T where a=1");
    EXPECT_EQ(sqlite("select * from T a (nolock), U"), "select * from T a, U");
    EXPECT_EQ(sqlite("insert into T(a) values(1)"), "insert into T(a) values(1)")
        << "a list of columns stays";
}

TEST(Dialect, TopBecomesALimitAtTheEndOfItsSelect)
{
    EXPECT_EQ(sqlite("select top 5 * from T order by a desc"), "select * from T order by a desc limit 5");
    EXPECT_EQ(sqlite("select a from T where b in (select top (1) c from U order by c) and d=2"),
              "select a from T where b in (select c from U order by c limit 1) and d=2");
    EXPECT_EQ(sqlite("select distinct top 2 a from T"), "select distinct a from T limit 2");
}

TEST(Dialect, PlusBetweenTextsJoinsThem)
{
    EXPECT_EQ(sqlite("select a + ' ' + b from T"), "select a || ' ' || b from T");
    EXPECT_EQ(sqlite("select cast(a as nvarchar(30)) + b, isnull(c,N'')+d from T"),
              "select cast(a as nvarchar(30)) || b, ifnull(c,'')||d from T");
    EXPECT_EQ(sqlite("select case a when 1 then 'x' else 'y' end + b from T"),
              "select case a when 1 then 'x' else 'y' end || b from T");
    EXPECT_EQ(sqlite("select a + left(b,2), t.c + ('x' + d) from T"),
              "select a || zelmo_left(b,2), t.c || ('x' || d) from T");
}

TEST(Dialect, PlusBetweenNumbersAdds)
{
    for (const char *text :
         {"select max(Code)+1 from T", "select a+b, +1, -(-2)+? from T where x='t' and b+1=2",
          "select len('abc')+1", "select cast('5' as int)+1", "select (select 'a')+1"})
        EXPECT_EQ(sqlite(text), text);
}

TEST(Dialect, ConvertBecomesCast)
{
    EXPECT_EQ(sqlite("select convert(nvarchar(10),a) from T"), "select cast(a as nvarchar(10)) from T");
    EXPECT_EQ(sqlite("select convert(int, f(a,b), 120)+1"), "select cast( f(a,b) as int)+1");
}

TEST(Dialect, FunctionsWhoseNamesTheEngineCannotHaveAreRenamed)
{
    EXPECT_EQ(sqlite("select left(a,2), right(a,3), nchar(1740) from T left join U on T.a=U.a"),
              "select zelmo_left(a,2), zelmo_right(a,3), char(1740) from T left join U on T.a=U.a");
}

TEST(Dialect, AWidthWithoutLimitIsLeftOut)
{
    EXPECT_EQ(sqlite("select cast(a as nvarchar(max)), max(b) from T"),
              "select cast(a as nvarchar), max(b) from T");
}

TEST(Dialect, WideTextsLoseTheirMark)
{
    EXPECT_EQ(sqlite("select N'کد', n from T"), QString::fromUtf8("select 'کد', n from T"));
}

TEST(Dialect, NamedPlacesComeInLowerCase)
{
    EXPECT_EQ(sqlite("select * from staff where code=:Code"), "select * from staff where code=:code");
}

TEST(Dialect, StatementsPartedByBlanksOnlyAreCutApart)
{
    const Dialect::TTranslated &batch = Dialect::toSqlite(
        "update T set a=? where b=6 update T set a=?, c=? where b=7\r\ndelete T insert into T "
        "select * from U union all select 1 select 2");
    EXPECT_EQ(batch.statements,
              (QStringList{"update T set a=? where b=6", "update T set a=?, c=? where b=7", "delete from T",
                           "insert into T select * from U union all select 1", "select 2"}));
    EXPECT_EQ(batch.places, (QList<int>{1, 2, 0, 0, 0}));
}

TEST(Dialect, SemicolonsPartStatementsToo)
{
    EXPECT_EQ(Dialect::toSqlite("delete T;; delete from U;").statements,
              (QStringList{"delete from T", "delete from U"}));
    EXPECT_EQ(Dialect::toSqlite("insert into T values('a;b')").statements.size(), 1);
}

TEST(Dialect, WordsThatBelongToAStatementDoNotCutIt)
{
    for (const char *text :
         {"select a from T where b in (select c from U) and exists (select 1)", "insert into T(a) select ?",
          "create view V as select 1", "with c as (select 1 as a) select a from c",
          "select 1 union select 2 except select 3",
          "create table T (a INT REFERENCES U (a) ON DELETE CASCADE)"})
        EXPECT_EQ(Dialect::toSqlite(text).statements.size(), 1) << text;
}

TEST(Dialect, PlacesInTextsAreNoPlaces)
{
    EXPECT_EQ(Dialect::toSqlite("select '?' , [?], ? -- ?").places, QList<int>{1});
}

TEST(Dialect, TableColumnsKeepTheirWidthAndCompareAsOnTheServer)
{
    EXPECT_EQ(
        sqlite("CREATE TABLE T (Code INT NOT NULL PRIMARY KEY CLUSTERED, Title NVARCHAR(50) NULL, Note "
               "NVARCHAR(MAX), Cost DECIMAL(23,9), Rate float, Flag BIT DEFAULT 0, Picture VARBINARY(MAX), "
               "CONSTRAINT C CHECK (Code > 0))"),
        "CREATE TABLE T (Code INT NOT NULL PRIMARY KEY, Title NVARCHAR(50) COLLATE ZELMO NULL, Note TEXT "
        "COLLATE ZELMO, Cost REAL, Rate REAL, Flag BIT DEFAULT 0, Picture BLOB, CONSTRAINT C CHECK (Code > 0))");
}

TEST(Dialect, AColumnThatCountsByItselfIsTheIntegerPrimaryKey)
{
    RawDatabase db(false);
    ASSERT_EQ(
        db.tsql("create table T (ID int identity(1,1) not null constraint PK_T primary key, a nvarchar(5))"),
        "");
    ASSERT_EQ(db.tsql("insert into T(a) values('x') insert into T(a) values('y') delete T where ID=2 "
                      "insert into T(a) values('z')"),
              "");
    EXPECT_EQ(db.rows("select ID,a from T"), "1|x\n3|z") << "a number is never given twice";
}

TEST(Dialect, AnAddedColumnIsFittedToo)
{
    EXPECT_EQ(sqlite("ALTER TABLE T ADD Title NVARCHAR(50) NULL"),
              "ALTER TABLE T ADD Title NVARCHAR(50) COLLATE ZELMO NULL");
}

TEST(Dialect, ATextThatIsNoTsqlComesBackAsItIs)
{
    for (const char *text : {"pragma  foreign_keys", "nonsense  'open", "", "   ", "-- only a comment",
                             "create  trigger t before delete on T begin select 1; end"}) {
        EXPECT_EQ(Dialect::toSqlite(text).statements, QStringList{text});
        EXPECT_EQ(Dialect::toSqlite(text).places.size(), 1);
    }
}

TEST(Dialect, BrokenTextsDoNoHarm)
{
    for (const char *text : {"select",
                             "select (",
                             "select )",
                             "select top",
                             "select case",
                             "select a +",
                             "delete",
                             "insert",
                             "select convert(",
                             "select convert(int)",
                             "create table",
                             "create table T",
                             "create table T (",
                             "create table T (a",
                             "select a = ",
                             "select , = ,",
                             "select cast(a)",
                             "select isnull(",
                             "alter table T add",
                             "with",
                             "select * from T with (",
                             "select end + end",
                             "select ) + ) end",
                             "select dbo.",
                             "select 'x' +",
                             "select (+ 'x'",
                             "select ((((('x'+"})
        EXPECT_FALSE(Dialect::toSqlite(text).statements.isEmpty()) << text;
}

TEST(Dialect, RemembersATextSeenBefore)
{
    const Dialect::TTranslated *first = &Dialect::toSqlite("select isnull(remembered,1) from T");
    EXPECT_EQ(first, &Dialect::toSqlite("select isnull(remembered,1) from T"));
}

TEST(Dialect, GoesOnAfterMoreTextsThanItRemembers)
{
    for (int i = 0; i < 5000; ++i) {
        const QString text = QString("select isnull(a,%1) from T").arg(i);
        ASSERT_EQ(Dialect::toSqlite(text).statements,
                  QStringList{QString("select ifnull(a,%1) from T").arg(i)});
    }
}

// A statement that was seen before is looked up in a small part of the time that preparing it takes.
TEST(Dialect, ASeenTextCostsAtMostATwentiethOfPreparingIt)
{
    RawDatabase db;
    const QString text =
        "select * from (select * from staff_VW) as SearchT where (StaffGroup = ?) and (LeaveDate = '')";
    const QByteArray translated = Dialect::toSqlite(text).statements.first().toUtf8();
    const auto bestOf = [](auto work) {
        auto best = std::chrono::nanoseconds::max();
        for (int round = 0; round < 7; ++round) {
            const auto start = std::chrono::steady_clock::now();
            for (int i = 0; i < 200; ++i)
                work();
            best = std::min<std::chrono::nanoseconds>(best, std::chrono::steady_clock::now() - start);
        }
        return best;
    };
    qsizetype sum = 0;
    const auto looking = bestOf([&] { sum += Dialect::toSqlite(text).statements.size(); });
    const auto preparing = bestOf([&] {
        sqlite3_stmt *statement = nullptr;
        sum += sqlite3_prepare_v2(db.handle(), translated.constData(), -1, &statement, nullptr);
        sqlite3_finalize(statement);
    });
    EXPECT_EQ(sum, 1400);
    RecordProperty("lookupNanoseconds", int(looking.count() / 200));
    RecordProperty("prepareNanoseconds", int(preparing.count() / 200));
    EXPECT_LE(looking * 20, preparing) << looking.count() / 200 << " ns against " << preparing.count() / 200;
}

} // namespace
