#include "host/database/WriterQueue.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <functional>
#include <mutex>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using std::chrono::milliseconds;

class WriterQueue : public testing::Test {
protected:
    WriterQueue() : database(folder.filePath("queue.db"))
    {
        QFile file(database);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    QTemporaryDir folder;
    QString database;
};

TEST_F(WriterQueue, WritersGetTheirTurnInTheOrderOfTheirComing)
{
    TWriterQueue first(database);
    ASSERT_TRUE(first.enter());
    std::mutex guard;
    std::vector<int> order;
    std::vector<std::thread> writers;
    for (int number = 1; number <= 4; ++number) {
        writers.emplace_back([&, number] {
            TWriterQueue queue(database);
            EXPECT_TRUE(queue.enter());
            {
                const std::lock_guard<std::mutex> one(guard);
                order.push_back(number);
            }
            std::this_thread::sleep_for(milliseconds(5));
            queue.leave();
        });
        std::this_thread::sleep_for(milliseconds(60)); // each one comes after the one before
    }
    EXPECT_TRUE(order.empty()) << "all of them wait";
    first.leave();
    for (std::thread &writer : writers)
        writer.join();
    EXPECT_EQ(order, std::vector<int>({1, 2, 3, 4}));
}

TEST_F(WriterQueue, WhoComesAgainStandsBehindThoseWhoWait)
{
    TWriterQueue busy(database);
    ASSERT_TRUE(busy.enter());
    std::atomic<bool> served = false;
    std::thread waiting([&] {
        TWriterQueue queue(database);
        EXPECT_TRUE(queue.enter());
        served = true;
        queue.leave();
    });
    std::this_thread::sleep_for(milliseconds(60));
    busy.leave();
    ASSERT_TRUE(busy.enter());
    EXPECT_TRUE(served);
    busy.leave();
    waiting.join();
}

TEST_F(WriterQueue, TheTicketOfAKilledProgramGoesWithIt)
{
    int ready[2] = {};
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        TWriterQueue queue(database);
        queue.enter();
        const ssize_t told = write(ready[1], "x", 1);
        for (;;)
            pause();
        _exit(told == 1 ? 0 : 1);
    }
    char sign = 0;
    ASSERT_EQ(read(ready[0], &sign, 1), 1);
    std::thread killer([child] {
        std::this_thread::sleep_for(milliseconds(200));
        kill(child, SIGKILL);
    });
    QElapsedTimer timer;
    timer.start();
    TWriterQueue queue(database);
    EXPECT_TRUE(queue.enter());
    EXPECT_GE(timer.elapsed(), 150) << "it waited for the other one";
    EXPECT_LT(timer.elapsed(), 4000);
    killer.join();
    waitpid(child, nullptr, 0);
    close(ready[0]);
    close(ready[1]);
}

TEST_F(WriterQueue, IsPrivateToWhoMayWriteTheDatabase)
{
    QFile::setPermissions(database, QFile::ReadOwner | QFile::WriteOwner);
    TWriterQueue queue(database);
    ASSERT_TRUE(queue.enter());
    struct stat info = {};
    ASSERT_EQ(stat(QFile::encodeName(TWriterQueue::fileOf(database)).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    EXPECT_EQ(info.st_size, 0);
}

TEST_F(WriterQueue, WhereItCannotBeMadeNobodyWaits)
{
    ASSERT_TRUE(QDir().mkdir(TWriterQueue::fileOf(database))); // a folder in its place
    TWriterQueue one(database);
    TWriterQueue other(database);
    EXPECT_TRUE(one.enter());
    EXPECT_TRUE(other.enter());
}

TEST_F(WriterQueue, WhoWritesWhileNobodyWaitsNeedsNoTicket)
{
    TestDatabase db(TestDatabase::FileAlways);
    db.run("create table T(A INT primary key)");
    TWriterQueue queue(db.path());
    db.connection().BeginTrans();
    EXPECT_TRUE(queue.isEmpty());
    db.connection().RollbackTrans();
}

TEST_F(WriterQueue, WhoMeetsAWriterTakesATicketAndHoldsItToTheEndHoweverItEnds)
{
    TestDatabase db(TestDatabase::FileAlways);
    db.run("create table T(A INT primary key)");
    TWriterQueue queue(db.path(), 300);
    // The work of a second program, which comes while a transaction is open and waits for it.
    const auto meanwhile = [&](const std::function<void(TConnection &)> &work) {
        TConnection second;
        second.openFile(db.path());
        db.connection().BeginTrans();
        std::thread other([&] { work(second); });
        QElapsedTimer timer;
        timer.start();
        while (queue.isEmpty() && !timer.hasExpired(3000))
            std::this_thread::sleep_for(milliseconds(1));
        EXPECT_FALSE(queue.isEmpty()) << "it waits with a ticket";
        db.connection().RollbackTrans();
        other.join();
    };
    const auto insert = [](int value) { return TStatement("insert into T values(").integer(value).sql(")"); };
    meanwhile([&](TConnection &second) { second.execute(insert(1)); });
    EXPECT_TRUE(queue.isEmpty()) << "after a statement alone";
    meanwhile([&](TConnection &second) { EXPECT_THROW(second.execute(insert(1)), TDatabaseError); });
    EXPECT_TRUE(queue.isEmpty()) << "after a statement that failed";
    meanwhile([&](TConnection &second) {
        EXPECT_THROW(second.execute(TStatement("insert into T values(2) insert into T values(1)")),
                     TDatabaseError);
    });
    EXPECT_TRUE(queue.isEmpty()) << "after a batch that failed";
    meanwhile([&](TConnection &second) {
        second.BeginTrans();
        second.execute(insert(3));
        EXPECT_FALSE(queue.isEmpty()) << "amid a transaction";
        EXPECT_FALSE(queue.enter()) << "and others wait behind it";
        second.CommitTrans();
    });
    EXPECT_TRUE(queue.isEmpty()) << "after a commit";
    meanwhile([&](TConnection &second) {
        second.BeginTrans();
        second.RollbackTrans();
    });
    EXPECT_TRUE(queue.isEmpty()) << "after a rollback";
    EXPECT_EQ(db.text("select count(*) from T"), "2");
}

TEST_F(WriterQueue, WhoReadsNeverTakesATicket)
{
    TestDatabase db(TestDatabase::FileAlways);
    db.run("create table T(A INT primary key)");
    TConnection second;
    second.openFile(db.path());
    db.connection().BeginTrans();
    TWriterQueue queue(db.path());
    EXPECT_EQ(second.scalar(TStatement("select count(*) from T")).toInt(), 0);
    EXPECT_TRUE(queue.isEmpty());
    db.connection().RollbackTrans();
}

} // namespace
