#include "Screens.h"

#include "app/DatabaseSettings_FRM.h"
#include "app/MainWindow.h"
#include "host/BaseFrame_PKG/Pic_Get.h"
#include "host/Component_ZLM/FileDialogs.h"
#include "host/NewBaseForms_PKG/ListExport.h"
#include "host/database/SqliteFile.h"

#include <QAction>
#include <QApplication>
#include <QDirIterator>
#include <QFile>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QProcess>
#include <QTimer>

#include <gtest/gtest.h>

#include <unistd.h>

// A file dialog beside the open database: the locks of the process stay, and with them the log.

namespace {

class FileDialogsBesideTheDatabase : public ScreensOnAFile {
protected:
    FileDialogsBesideTheDatabase() : folder(QDir::currentPath())
    {
        QDir::setCurrent(home.path());
        // A name without an ending that tells its kind makes Qt's own dialog look inside.
        run("insert into StaffGroup(Code, Name) values(7, 'before')");
    }
    ~FileDialogsBesideTheDatabase() override { QDir::setCurrent(folder); }

    QString database() const { return home.filePath("suite.db"); }
    /// The locks that this process holds on the database's files, a line each.
    std::string locks() const
    {
        QStringList numbers;
        for (const char *ending : {"", "-shm"})
            numbers << QString::number(SqliteFile::identityOf(database() + ending).number);
        QStringList held;
        // The list is read in pieces while other programs lock and unlock: a line may come twice, or be passed over.
        for (int reading = 0; reading < 5; ++reading) {
            QFile all("/proc/locks");
            EXPECT_TRUE(all.open(QIODevice::ReadOnly));
            for (const QString &line : QString::fromLatin1(all.readAll()).split(u'\n')) {
                const QStringList words = line.simplified().split(u' ');
                if (words.size() > 7 && words[1] == "POSIX" && words[4].toLongLong() == getpid() &&
                    numbers.contains(words[5].section(u':', -1)))
                    held << words.mid(1).join(u' ');
            }
        }
        held.removeDuplicates();
        held.sort();
        return held.join(u'\n').toStdString();
    }
    /// Opens a dialog in the database's folder, sees its files listed, and leaves it: all locks stay.
    void mustKeepTheLocks(const std::function<void()> &open)
    {
        const std::string before = locks();
        ASSERT_NE(before, "");
        bool listed = false;
        Keys::runModal(
            [&] {
                open();
                return 0;
            },
            [&](QWidget *screen) {
                auto *dialog = qobject_cast<QFileDialog *>(screen);
                ASSERT_NE(dialog, nullptr);
                dialog->setNameFilter("All (*)");
                dialog->setDirectory(home.path());
                auto *model = dialog->findChild<QFileSystemModel *>();
                ASSERT_NE(model, nullptr);
                listed = Keys::waitFor([&] {
                    const QModelIndex row = model->index(database());
                    return row.isValid() && model->rowCount(row.parent()) > 2 &&
                           !row.siblingAtColumn(2).data().toString().isEmpty();
                });
                // The detailed view shows each file's kind.
                dialog->setViewMode(QFileDialog::Detail);
                Keys::waitFor([] { return false; }, 100);
                EXPECT_EQ(locks(), before) << "while it is open";
                Keys::press(dialog, Qt::Key_Escape);
            });
        EXPECT_TRUE(listed);
        EXPECT_EQ(locks(), before) << "after it";
    }

private:
    QString folder;
};

TEST_F(FileDialogsBesideTheDatabase, EachKeepsTheLocks)
{
    TMain_FRM window(session);
    for (const char *item : {"Backup_ACT", "Restore_ACT"}) {
        SCOPED_TRACE(item);
        mustKeepTheLocks([&] { window.findChild<QAction *>(item)->trigger(); });
    }
    for (const char *suffix : {"xlsx", "pdf"}) {
        SCOPED_TRACE(suffix);
        mustKeepTheLocks([&] { AskFileToWrite(&window, "x", "list", suffix); });
    }
    {
        SCOPED_TRACE("database settings");
        TDatabaseSettings_FRM settings({database(), {}});
        settings.show();
        mustKeepTheLocks([&] { settings.findChild<QAbstractButton *>("Pick_BTN")->click(); });
    }
    {
        SCOPED_TRACE("picture");
        const std::unique_ptr<QFileDialog> dialog(
            FileDialogs::Make(nullptr, "x", "All (*)", QFileDialog::AcceptOpen));
        mustKeepTheLocks([&] { dialog->exec(); });
    }
}

TEST_F(FileDialogsBesideTheDatabase, NoSourceAsksForAFileInAnotherWay)
{
    int looked = 0;
    for (const char *folder : {"/app", "/src"}) {
        QDirIterator files(QString(KETEBIONPAP_SOURCE) + folder, {"*.cpp", "*.h"}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            const QByteArray text = file.readAll();
            ++looked;
            if (file.fileName().endsWith("/FileDialogs.cpp"))
                continue;
            for (const char *way :
                 {"QFileDialog::get", "new QFileDialog", "QFileDialog dialog", "QFileSystemModel"})
                EXPECT_FALSE(text.contains(way)) << file.fileName().toStdString() << ": " << way;
        }
    }
    EXPECT_GT(looked, 100);
}

TEST_F(FileDialogsBesideTheDatabase, ASecondProgramThatComesAndGoesLeavesTheLogAndTheRowsToCome)
{
    TMain_FRM window(session);
    mustKeepTheLocks([&] { window.findChild<QAction *>("Restore_ACT")->trigger(); });
    const SqliteFile::TIdentity log = SqliteFile::identityOf(database() + "-wal");
    ASSERT_NE(log.number, 0u);

    QFile password(home.filePath("password"));
    ASSERT_TRUE(password.open(QIODevice::WriteOnly));
    password.write("not-the-password\n");
    password.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    password.close();
    const auto second = [&] {
        QProcess program;
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.insert("QT_QPA_PLATFORM", "offscreen");
        variables.insert("XDG_CONFIG_HOME", home.filePath("config-2"));
        program.setProcessEnvironment(variables);
        program.start(QStringLiteral(KETEBIONPAP_BIN "/ketebionpap"),
                      {"--database", database(), "--user", "nobody", "--password-file", password.fileName(),
                       "--call", "Open_TaxList"});
        EXPECT_TRUE(program.waitForFinished(60000));
        EXPECT_EQ(program.readAllStandardError().toStdString(),
                  "ketebionpap: cannot log in as nobody: wrong name or password\n");
    };
    second();
    EXPECT_EQ(SqliteFile::identityOf(database() + "-wal"), log) << "the log of the first one stays";
    run("insert into StaffGroup(Code, Name) values(8, 'after')");
    second();
    TConnection third;
    third.openFile(database());
    EXPECT_EQ(third.scalar(TStatement("select count(*) from StaffGroup where Code in (7, 8)")).toInt(), 2);
}

TEST_F(FileDialogsBesideTheDatabase, TheOpenDatabaseIsNoPictureAndNoTargetOfAList)
{
    const std::string before = locks();
    for (const char *ending : {"", "-wal", "-shm"}) {
        EXPECT_FALSE(TPic_Get("x", nullptr).TakeFile(database() + ending));
        EXPECT_NE(told().find("JPEG"), std::string::npos);
        EXPECT_EQ(locks(), before) << ending;
    }
    const qsizetype said = messages.all().size();
    // Named first, then given up, when the dialog stands there again.
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        if (messages.all().size() > said) {
            dialog->reject();
            return;
        }
        dialog->setOption(QFileDialog::DontConfirmOverwrite); // Qt's own question
        Keys::retype(Keys::child(dialog, "fileNameEdit"), database());
        Keys::press(dialog, Qt::Key_Return);
    });
    poll.start(50);
    const QString file = AskFileToWrite(nullptr, "x", "list", "xlsx");
    poll.stop();
    EXPECT_NE(told().find("خود برنامه باز دارد"), std::string::npos);
    EXPECT_EQ(file, QString());
    EXPECT_EQ(locks(), before);
}

} // namespace
