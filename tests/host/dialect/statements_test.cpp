#include "GivenStatements.h"
#include "RawDatabase.h"

namespace {

TEST(GivenStatements, AreAllPreparedAgainstTheSchema)
{
    RawDatabase db;
    for (const TGivenStatement &given : givenStatements) {
        const Dialect::TTranslated &translated = Dialect::toSqlite(QString::fromUtf8(given.text));
        EXPECT_EQ(translated.statements.size(), given.statements) << given.text;
        for (const QString &statement : translated.statements) {
            sqlite3_stmt *prepared = db.prepare(statement);
            EXPECT_TRUE(prepared) << sqlite3_errmsg(db.handle()) << "\n"
                                  << given.text << "\n"
                                  << statement.toStdString();
            sqlite3_finalize(prepared);
        }
    }
}

TEST(GivenStatements, KeepTheirPlacesInOrder)
{
    for (const TGivenStatement &given : givenStatements) {
        const QString text = QString::fromUtf8(given.text);
        int places = 0;
        for (const int count : Dialect::toSqlite(text).places)
            places += count;
        EXPECT_EQ(places, text.count('?')) << given.text; // no text of them holds one
    }
}

TEST(GivenStatements, ReadAnEmptyDatabaseWithoutError)
{
    RawDatabase db;
    for (const TGivenStatement &given : givenStatements) {
        for (const QString &statement : Dialect::toSqlite(QString::fromUtf8(given.text)).statements) {
            sqlite3_stmt *prepared = db.prepare(statement);
            if (!prepared || !sqlite3_stmt_readonly(prepared)) {
                sqlite3_finalize(prepared);
                continue;
            }
            int code;
            while ((code = sqlite3_step(prepared)) == SQLITE_ROW) {
            }
            EXPECT_EQ(code, SQLITE_DONE) << sqlite3_errmsg(db.handle()) << "\n" << given.text;
            sqlite3_finalize(prepared);
        }
    }
}

// The search runs the list's statement inside its own.
TEST(GivenStatements, OfListsAreSearched)
{
    RawDatabase db;
    const char *const lists[] = {
        "select * from staff_VW", "select * from Fiscal_VW", "select * from Deduction_VW",
        "select * from TaxMain ",
        "select *,Case DecTax when 0 then 'a' when 1 then 'b' end as DecTaxTitle from "
        "CalcMethod_VW "};
    for (const char *list : lists) {
        const QString text = QString("select * from (%1) as SearchT where (zelmo_finds(?, Comment) = 1) "
                                     "and (charindex(?, cast(Code as nvarchar(30))) = 1)")
                                 .arg(list);
        sqlite3_stmt *prepared = db.prepare(Dialect::toSqlite(text).statements.value(0));
        EXPECT_TRUE(prepared) << sqlite3_errmsg(db.handle()) << "\n" << list;
        sqlite3_finalize(prepared);
    }
}

// A list that reads its keys needs nothing but an index: a million rows are a matter of a moment.
TEST(GivenStatements, OfListsReadTheirKeysFromAnIndex)
{
    RawDatabase db;
    const char *const keys[] = {
        "select Code from (select * from staff_VW) as L order by Code",
        "select Code from (select * from (select * from staff_VW) as S where (StaffGroup = 3)) as L order by Code",
        "select Code from (select * from (select * from staff_VW) as S where (LeaveDate = '')) as L order by Code",
        "select Code from (select * from (select * from staff_VW) as S where (StaffGroup = 3) and (LeaveDate = '')) "
        "as L order by Code",
        "select Code from (select * from (select * from staff_VW) as S where (zelmo_finds('a', fullnameTitle) = 1)) "
        "as L order by Code",
        "select Code from (select * from (select * from staff_VW) as S where (LeaveDate = '') and "
        "(zelmo_finds('a', fullnameTitle) = 1)) as L order by Code",
        "select Code from (select * from CalcMethod_VW) as L order by Code",
        "select Code from (select * from (select * from Fiscal_VW) as S where (GrpCode = 3)) as L order by Code",
        "select Code from (select * from (select * from Deduction_VW) as S where (GrpCode = 3)) as L order by Code"};
    for (const char *statement : keys) {
        sqlite3_stmt *plan = db.prepare(QString("explain query plan %1").arg(statement));
        ASSERT_TRUE(plan) << statement;
        int steps = 0;
        while (sqlite3_step(plan) == SQLITE_ROW) {
            ++steps;
            EXPECT_TRUE(QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(plan, 3)))
                            .contains("USING COVERING INDEX"))
                << statement << "\n"
                << sqlite3_column_text(plan, 3);
        }
        EXPECT_EQ(steps, 1) << statement;
        sqlite3_finalize(plan);
    }
}

} // namespace
