#include "support/TestDatabase.h"

#include "host/ZelmoSearch/FoldedTwin.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class Twin : public testing::Test {
protected:
    Twin()
    {
        db.run(
            "create table Word(Code integer not null primary key, Title nvarchar(100), More nvarchar(100))");
    }
    void add(int code, const QString &title, const QString &more = {})
    {
        db.connection().execute(TStatement("insert into Word(Code, Title, More) values(")
                                    .integer(code)
                                    .sql(", ")
                                    .text(title)
                                    .sql(", ")
                                    .text(more)
                                    .sql(")"));
    }
    int twinOf(const QString &text, int own = 0)
    {
        const auto twin = FindTwin(db.connection(), "Word", {{"Title", text}}, own, {"Title"});
        return twin ? twin->code : 0;
    }

    TestDatabase db;
};

} // namespace

TEST_F(Twin, IsFoundInEveryWayThatPeopleWriteATextAndInNoOther)
{
    const QString typed = u"شب کاری 12 Ab"_s;
    const QString same[] = {u"شب كاري 12 Ab"_s, u"شب کارى ۱۲ aB"_s, u" شب کاری ١٢ AB "_s,
                            u"شب  کا\u200Cری 12 Ab"_s, u"شَب کاری 12\u00A0Ab"_s};
    for (const QString &stored : same) {
        db.run("delete from Word");
        add(7, stored);
        EXPECT_EQ(twinOf(typed), 7) << stored.toStdString();
        EXPECT_EQ(twinOf(typed, 7), 0) << "one's own row is no twin";
    }
    for (const QString &stored : {u"شب کاری 12"_s, u"شب کاری 12 Abc"_s, u"شبکاری 12 Ab"_s, u""_s}) {
        db.run("delete from Word");
        add(7, stored);
        EXPECT_EQ(twinOf(typed), 0) << stored.toStdString();
    }
}

TEST_F(Twin, MustHoldAllTheTextsAndTheOneWithTheSmallestCodeIsNamed)
{
    add(9, "ali", "rezai");
    add(8, "ALI", "rezai");
    add(3, "ali", "other");
    db.run("insert into Word(Code) values(1)");
    const auto twin =
        FindTwin(db.connection(), "Word", {{"Title", "Ali"}, {"More", "Rezai"}}, 0, {"Title", "More"});
    ASSERT_TRUE(twin);
    EXPECT_EQ(twin->code, 8);
    EXPECT_EQ(twin->title, "ALI rezai");
    EXPECT_EQ(TwinText(*twin), u"رکورد دارنده آن: ALI rezai (کد 8)"_s);
}

TEST_F(Twin, NothingThatCanBeSeenHasNone)
{
    add(4, " ");
    EXPECT_EQ(twinOf(""), 0);
    EXPECT_EQ(twinOf("  "), 0);
}
