#include "Screens.h"

#include "app/Administration_FRM.h"
#include "app/Users_FRM.h"

#include <QTableWidget>

using namespace Qt::Literals::StringLiterals;

// Where the short lists of the administration stand after their rows changed.

using enum TAnswer;

TEST_F(Screens, AfterAUserIsDeletedTheNextOneIsCurrentAndTheQuestionNamedHim)
{
    user("anna", "secret-b7qx2", true);
    user("bahar");
    user("cyrus");
    TUserList_FRM list;
    Keys::runModal([&] { return list.exec(); },
                   [&](QWidget *screen) {
                       const auto current = [&] {
                           return list.Table()->item(list.Table()->currentRow(), 0)->text();
                       };
                       while (current() != "bahar")
                           Keys::press(screen, Qt::Key_Down);
                       messages.answer({Yes, Yes});
                       Keys::press(screen, Qt::Key_F7);
                       EXPECT_EQ(current(), "cyrus");
                       EXPECT_TRUE(messages.all().at(0).text.startsWith(
                           u"آیا از حذف این سطر اطمینان دارید؟\nنام کاربر: \u2068bahar\u2069"_s));
                       // What another administrator does moves the places, not the current row.
                       run("delete from UserAccount where Name='anna'");
                       list.Refresh();
                       EXPECT_EQ(current(), "cyrus");
                       Keys::press(screen, Qt::Key_Escape);
                   });
}

TEST_F(Screens, ALockThatCameOrWentElsewhereDoesNotMoveTheCurrentOne)
{
    for (const char *code : {"1", "2", "3"})
        run(u"insert into CodeLock_TBL(Code,Status,Com_Index) values('%1',806,7)"_s.arg(QLatin1String(code)));
    TLockList_FRM list;
    Keys::runModal([&] { return list.exec(); },
                   [&](QWidget *screen) {
                       const auto current = [&] {
                           return list.Table()->item(list.Table()->currentRow(), 1)->text();
                       };
                       while (current() != "2")
                           Keys::press(screen, Qt::Key_Down);
                       run("delete from CodeLock_TBL where Code='1'");
                       Keys::press(screen, Qt::Key_F5);
                       EXPECT_EQ(current(), "2");
                       run("delete from CodeLock_TBL where Code='2'");
                       Keys::press(screen, Qt::Key_F5);
                       EXPECT_EQ(current(), "3");
                       Keys::press(screen, Qt::Key_Escape);
                   });
}
