#include "Screens.h"

#include "app/MainWindow.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileDialog>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// The question before a restore, and what happens while it stands.

namespace {

/// Answers every question with Yes, after somebody else did something.
class TMeanwhile : public TMessageService {
public:
    explicit TMeanwhile(std::function<void()> work) : m_work(std::move(work)) { SetMessageService(this); }
    ~TMeanwhile() override { SetMessageService(nullptr); }
    TAnswer show(const TMessage &message) override
    {
        texts << message.text;
        if (message.shape != TMessageShape::Question)
            return TAnswer::Ok;
        question = message.text;
        m_work();
        return TAnswer::Yes;
    }
    QStringList texts;
    QString question;

private:
    std::function<void()> m_work;
};

class TheQuestionBeforeARestore : public ScreensOnAFile {
protected:
    TheQuestionBeforeARestore()
    {
        run("insert into StaffGroup(Code, Name) values(7, 'before')");
        run("insert into UserEvent(EventText, EventDate, EventTime) values('x', '1403/02/03', '04:05:06')");
        choose("Backup_ACT");
        run("update StaffGroup set Name='now' where Code=7");
    }
    ~TheQuestionBeforeARestore() override { SetMessageService(&messages); }
    void choose(const char *item)
    {
        Keys::runModal(
            [&] {
                window.findChild<QAction *>(item)->trigger();
                return 0;
            },
            [&](QWidget *screen) {
                auto *dialog = qobject_cast<QFileDialog *>(screen);
                ASSERT_NE(dialog, nullptr);
                Keys::retype(Keys::child(dialog, "fileNameEdit"), home.filePath("b.db"));
                Keys::press(dialog, Qt::Key_Return);
            });
    }
    QString name() { return text("select Name from StaffGroup where Code=7"); }

    TMain_FRM window{session};
};

TEST_F(TheQuestionBeforeARestore, ShowsWhatTheBackupHolds)
{
    messages.answer({TAnswer::No});
    choose("Restore_ACT");
    const QString question = messages.last().text;
    EXPECT_TRUE(question.contains("1403/02/03")) << question.toStdString();
    EXPECT_TRUE(question.contains(u"پرسنل : 0"_s)) << question.toStdString();
    EXPECT_EQ(name(), "now");
    EXPECT_EQ(QDir(home.path()).entryList({"*.restore*", "*before*"}), QStringList());
}

TEST_F(TheQuestionBeforeARestore, IsInVainWhenARecordIsOpenedWhileItStands)
{
    TMeanwhile others([&] { run("insert into CodeLock_TBL(Code, Status, Com_Index) values('9', 806, 3)"); });
    choose("Restore_ACT");
    EXPECT_NE(others.question, QString());
    EXPECT_TRUE(others.texts.last().contains(u"در حال ویرایش"_s)) << others.texts.last().toStdString();
    EXPECT_EQ(name(), "now");
    EXPECT_EQ(QDir(home.path()).entryList({"*.restore*", "*before*"}), QStringList());
}

TEST_F(TheQuestionBeforeARestore, LosesNothingThatIsSavedWhileItStands)
{
    TMeanwhile others([&] { run("insert into StaffGroup(Code, Name) values(9, 'last minute')"); });
    choose("Restore_ACT");
    EXPECT_EQ(name(), "before");
    const QStringList kept = QDir(home.path()).entryList({"suite.db.before-restore-*"});
    ASSERT_EQ(kept.size(), 1);
    TConnection connection;
    connection.openFile(home.filePath(kept.first()));
    EXPECT_EQ(connection.scalar(TStatement("select Name from StaffGroup where Code=9")).toString(),
              "last minute");
}

TEST_F(ScreensOnAFile, AConnectionMadeAgainMakesNoNewDatabase)
{
    const QString file = home.filePath("suite.db");
    ASSERT_TRUE(QFile::rename(file, home.filePath("away.db")));
    EXPECT_THROW(session.reconnect(), TDatabaseError);
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(ScreensOnAFile, AStartClearsAwayWhatAKilledRestoreLeft)
{
    for (const char *ending : {".restore", ".restore-wal"}) {
        QFile left(home.filePath("suite.db") + ending);
        ASSERT_TRUE(left.open(QIODevice::WriteOnly));
        left.write("half");
    }
    session.reconnect();
    EXPECT_EQ(QDir(home.path()).entryList({"*.restore*"}), QStringList());
}

} // namespace
