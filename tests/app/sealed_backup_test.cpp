#include "Screens.h"

#include "app/MainWindow.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// Backups with a password, from the menu.

namespace {

class ABackupWithAPassword : public ScreensOnAFile {
protected:
    ABackupWithAPassword()
    {
        run("insert into StaffGroup(Code, Name) values(7, 'before')");
        window.show();
    }
    QString file() const { return home.filePath("b.db"); }
    QByteArray content() const
    {
        QFile backup(file());
        return backup.open(QIODevice::ReadOnly) ? backup.readAll() : QByteArray();
    }
    QString name() { return text("select Name from StaffGroup where Code=7"); }
    static void nameFile(QWidget *screen, const QString &file)
    {
        auto *dialog = qobject_cast<QFileDialog *>(screen);
        ASSERT_NE(dialog, nullptr);
        Keys::retype(Keys::child(dialog, "fileNameEdit"), file);
        Keys::press(dialog, Qt::Key_Return);
    }
    void backUp(const std::function<void(QWidget *)> &work)
    {
        inNewSeal = work;
        trigger("Backup_ACT");
    }
    void trigger(const char *item)
    {
        Keys::runModal(
            [&] {
                window.findChild<QAction *>(item)->trigger();
                return 0;
            },
            [&](QWidget *screen) { nameFile(screen, file()); });
    }
    static void typeBoth(QWidget *dialog, const QString &password, const QString &repeated)
    {
        Keys::retype(Keys::child(dialog, "Password_EDT"), password);
        Keys::press(dialog, Qt::Key_Return);
        EXPECT_EQ(dialog->focusWidget(), Keys::child(dialog, "Repeat_EDT"));
        Keys::retype(Keys::child(dialog, "Repeat_EDT"), repeated);
        Keys::press(dialog, Qt::Key_Return);
    }
    void seal()
    {
        backUp([](QWidget *dialog) { typeBoth(dialog, u"رمز-Right-7"_s, u"رمز-Right-7"_s); });
    }
    /// Chooses the file, then works in the dialog that asks for its password. False: none came.
    bool restore(const std::function<void(QWidget *)> &work)
    {
        bool came = false;
        QTimer asked;
        QObject::connect(&asked, &QTimer::timeout, &asked, [&] {
            QWidget *dialog = QApplication::activeModalWidget();
            if (came || !dialog || dialog->objectName() != "TSeal_FRM"_L1)
                return;
            came = true;
            work(dialog);
            if (QWidget *left = QApplication::activeModalWidget(); left == dialog && left->isVisible())
                Keys::press(left, Qt::Key_Escape);
        });
        asked.start(5);
        trigger("Restore_ACT");
        return came;
    }
    QStringList copies() const
    {
        return QDir(home.path())
            .entryList({"*part*", "*.backup*", "*.restore*", "*before*"}, QDir::Files | QDir::Hidden);
    }

    TMain_FRM window{session};
};

TEST_F(ABackupWithAPassword, IsMadeAndTakenBackByKeys)
{
    seal();
    EXPECT_NE(told().find("ساخته و بررسی شد"), std::string::npos);
    EXPECT_GT(content().size(), 10000);
    EXPECT_FALSE(content().contains("SQLite"));
    run("update StaffGroup set Name='after' where Code=7");
    messages.answer({TAnswer::Yes});
    EXPECT_TRUE(restore([](QWidget *dialog) {
        Keys::picture(dialog, "encrypted-backup");
        Keys::type(Keys::child(dialog, "Password_EDT"), u"رمز-Right-7"_s);
        Keys::press(dialog, Qt::Key_Return);
    }));
    EXPECT_EQ(name(), "before") << told();
}

TEST_F(ABackupWithAPassword, IsNotMadeWithAMistypedOrShortOneNorAfterEsc)
{
    backUp([this](QWidget *dialog) {
        typeBoth(dialog, u"Right-Horse-7"_s, u"Right-Horse-8"_s);
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_NE(told().find("یکسان نیستند"), std::string::npos);
        typeBoth(dialog, u"abc"_s, u"abc"_s);
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_NE(told(), "");
        Keys::picture(dialog, "backup-password");
        Keys::press(dialog, Qt::Key_Escape);
    });
    EXPECT_FALSE(QFile::exists(file()));
    EXPECT_EQ(told(), "");
}

TEST_F(ABackupWithAPassword, ThatIsLeftEmptyIsAPlainOne)
{
    backUp([](QWidget *dialog) { Keys::press(dialog, Qt::Key_F3); });
    EXPECT_TRUE(content().startsWith("SQLite"));
    messages.answer({TAnswer::No});
    EXPECT_FALSE(restore([](QWidget *) {})) << "nobody is asked for a password";
}

TEST_F(ABackupWithAPassword, AsksAgainAfterAWrongOneAndChangesNothingWhenTheUserGivesUp)
{
    seal();
    run("update StaffGroup set Name='now' where Code=7");
    told();
    EXPECT_TRUE(restore([this](QWidget *dialog) {
        auto *input = Keys::find<QLineEdit>(dialog, "Password_EDT");
        Keys::type(input, u"another-one"_s);
        Keys::press(dialog, Qt::Key_F3);
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_NE(told().find("گذرواژه این پشتیبان درست نیست"), std::string::npos);
        EXPECT_EQ(input->text(), "");
        EXPECT_EQ(input->echoMode(), QLineEdit::Password);
        EXPECT_EQ(copies(), QStringList()) << "nothing lies there while the user thinks";
        Keys::press(dialog, Qt::Key_Escape);
    }));
    EXPECT_EQ(name(), "now");
    EXPECT_EQ(copies(), QStringList());
}

TEST_F(ABackupWithAPassword, ThatWasDamagedOrCutIsToldAsSuch)
{
    seal();
    const QByteArray whole = content();
    QByteArray changed = whole;
    changed[changed.size() / 2] = char(changed.at(changed.size() / 2) ^ 1);
    const auto toldOf = [&](const QByteArray &bytes) {
        QFile backup(file());
        EXPECT_TRUE(backup.open(QIODevice::WriteOnly));
        backup.write(bytes);
        backup.close();
        told();
        restore([](QWidget *dialog) {
            Keys::type(Keys::child(dialog, "Password_EDT"), u"رمز-Right-7"_s);
            Keys::press(dialog, Qt::Key_F3);
            EXPECT_FALSE(dialog->isVisible()) << "another password would not help";
        });
        return told();
    };
    EXPECT_NE(toldOf(changed).find("آسیب دیده یا دستکاری"), std::string::npos);
    EXPECT_NE(toldOf(whole.first(whole.size() - 1)).find("ناتمام"), std::string::npos);
    EXPECT_EQ(copies(), QStringList());
}

} // namespace
