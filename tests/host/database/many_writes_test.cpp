#include "host/database/Transaction.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

int flushes = 0;
bool flushFails = false;

} // namespace

/// Stands before the system's own in this program, so that what reaches the disk can be counted.
extern "C" __attribute__((visibility("default"))) int fdatasync(int file)
{
    ++flushes;
    if (flushFails) {
        errno = EIO;
        return -1;
    }
    return int(syscall(SYS_fdatasync, file));
}

namespace {

class ManyWrites : public testing::Test {
protected:
    ManyWrites()
    {
        db.run("create table T(A INT primary key)");
        flushes = 0;
    }
    ~ManyWrites() override { flushFails = false; }
    void insert(int from, int to)
    {
        for (int i = from; i < to; ++i)
            db.connection().execute(TStatement("insert into T values(").integer(i).sql(")"));
    }
    TestDatabase db{TestDatabase::FileAlways};
};

TEST_F(ManyWrites, EachWriteIsOnTheDiskWhenItReturns)
{
    insert(0, 20);
    EXPECT_EQ(flushes, 20);
}

TEST_F(ManyWrites, ManyWritesComeToTheDiskTogether)
{
    TManyWrites writes(db.connection());
    insert(0, 50);
    EXPECT_EQ(flushes, 0);
    writes.finish();
    EXPECT_EQ(flushes, 1);
    insert(50, 51);
    EXPECT_EQ(flushes, 2) << "and after that each one by itself again";
}

TEST_F(ManyWrites, AreBroughtToTheDiskAlsoWhenTheyAreBrokenOff)
{
    const auto breakOff = [this] {
        TManyWrites writes(db.connection());
        insert(0, 5);
        insert(4, 10);
    };
    EXPECT_THROW(breakOff(), TDatabaseError);
    EXPECT_EQ(flushes, 1);
    EXPECT_EQ(db.text("select count(*) from T"), "5");
}

TEST_F(ManyWrites, ADiskThatTakesThemNotIsTold)
{
    TManyWrites writes(db.connection());
    insert(0, 5);
    flushFails = true;
    EXPECT_THROW(writes.finish(), TDatabaseError);
    flushFails = false;
    insert(5, 6);
    EXPECT_EQ(flushes, 2) << "the next one flushes again";
}

TEST_F(ManyWrites, AnotherProgramSeesEachOneAtOnce)
{
    TConnection other;
    other.openFile(db.path());
    TManyWrites writes(db.connection());
    for (int i = 0; i < 3; ++i) {
        insert(i, i + 1);
        EXPECT_EQ(other.scalar(TStatement("select count(*) from T")).toInt(), i + 1);
    }
}

} // namespace
