#include "InProcess.h"
#include "Screens.h"

#include "app/DatabaseChoice.h"
#include "host/Declaration_PKG/Inioptionfile_unt.h"

#include <QFile>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

// Which database a start works on, and whether it is made.

namespace {

TEST_F(InProcess, ADatabaseThatWasNamedIsTheOneToWorkOn)
{
    ScriptedMessages messages;
    const auto answer = [&](QWidget *screen) {
        EXPECT_EQ(screen->findChild<QWidget *>("Database_BTN"), nullptr)
            << screen->objectName().toStdString();
        Keys::press(screen, Qt::Key_Escape);
    };
    EXPECT_EQ(runWithWindow(
                  [&] {
                      return run({"--database", home.filePath("named.db"), "--create"});
                  },
                  answer, [](QWidget *window) { window->close(); }),
              1);
}

TEST_F(InProcess, ANamedFileThatIsNotThereIsMadeAfterTheQuestionOnly)
{
    const QString file = home.filePath("folder/named.db");
    const auto start = [&] {
        return runWithWindow(
            [&] {
                return run({"--database", file});
            },
            [](QWidget *screen) { Keys::press(screen, Qt::Key_Escape); },
            [](QWidget *window) { window->close(); });
    };
    ScriptedMessages messages;
    messages.answer({TAnswer::No});
    EXPECT_EQ(start(), 1);
    EXPECT_TRUE(messages.last().text.contains(file));
    EXPECT_FALSE(QFile::exists(home.filePath("folder")));
    messages.answer({TAnswer::Yes});
    EXPECT_EQ(start(), 1);
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_EQ(messages.all().size(), 2);
}

TEST_F(InProcess, AFileOfTheSettingsThatIsGoneIsNotMadeWithoutAWord)
{
    const QString file = home.filePath("disk/company.db"); // a disk that is not there today
    IniOptions.load();
    ASSERT_TRUE((TDatabaseChoice{file, {}}.store()));
    ScriptedMessages messages;
    messages.answer({TAnswer::No, TAnswer::No});
    EXPECT_EQ(run({}), 1);
    ASSERT_EQ(messages.all().size(), 2);
    EXPECT_TRUE(messages.all()[0].text.contains(file));
    EXPECT_TRUE(messages.all()[1].text.contains(u"تنظیمات"_s)) << "and the settings are offered";
    EXPECT_FALSE(QFile::exists(home.filePath("disk")));
}

TEST_F(InProcess, ADatabaseOfTheSettingsThatCannotBeOpenedIsAskedAbout)
{
    const QString letter = home.filePath("letter");
    QFile file(letter);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, 'x'));
    file.close();
    IniOptions.load();
    ASSERT_TRUE((TDatabaseChoice{letter, {}}.store()));
    ScriptedMessages messages;
    messages.answer({TAnswer::No});
    EXPECT_EQ(run({}), 1);
    ASSERT_EQ(messages.all().size(), 1);
    EXPECT_TRUE(messages.last().text.contains(u"پایگاه داده نیست"_s)) << messages.last().text.toStdString();

    messages.answer({TAnswer::Yes, TAnswer::Yes}); // to the settings, and to a new file
    QStringList shown;
    EXPECT_EQ(runWithWindow([&] { return run({}); },
                            [&](QWidget *screen) {
                                shown << screen->objectName();
                                if (auto *input = screen->findChild<QLineEdit *>("File_EDT")) {
                                    Keys::retype(input, home.filePath("good.db"));
                                    Keys::press(screen, Qt::Key_F3);
                                } else {
                                    Keys::press(screen, Qt::Key_Escape);
                                }
                            },
                            [](QWidget *window) { window->close(); }),
              1);
    EXPECT_EQ(shown, QStringList({"TDatabaseSettings_FRM", "TWorkstation_FRM"}))
        << "the other database is open";
    EXPECT_EQ(TDatabaseChoice::stored().file, home.filePath("good.db"));
}

} // namespace
