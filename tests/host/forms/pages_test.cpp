#include "host/forms/FakeScreens.h"

#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "support/TestUser.h"

#include <QApplication>
#include <QTabBar>
#include <QTest>
#include <QWheelEvent>

namespace {

/// The pages of an editor, turned in every way there is.
class EditorPages : public Things {
protected:
    void SetUp() override { editor.GuardPage(1, cspStaff, cpStaffFamilyPage); }
    void open(const std::function<void()> &work)
    {
        Keys::runModal([&] { return editor.exec(); },
                       [&](QWidget *) {
                           Keys::waitFor([&] { return editor.isActiveWindow(); });
                           work();
                       });
    }
    void click(int page)
    {
        QTabBar *tabs = editor.Thing_PC->tabBar();
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(page).center());
    }
    TThingGet_FRM editor;
    const std::function<void()> waysToTheSecond[3] = {
        [this] { click(1); },
        [this] { Keys::press(&editor, Qt::Key_Tab, Qt::ControlModifier); },
        [this] { Keys::press(&editor, Qt::Key_2, Qt::ControlModifier); },
    };
};

TEST_F(EditorPages, AClickTurnsThePageAndTheFocusGoesAlong)
{
    open([&] {
        editor.Title_EDT->setFocus();
        click(1);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 1);
        EXPECT_TRUE(editor.Comment_EDT->hasFocus());
        click(0);
        EXPECT_TRUE(editor.Title_EDT->hasFocus()) << "where the page was left";
        editor.Save_BTN->setFocus();
        click(1);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 1);
        EXPECT_TRUE(editor.Save_BTN->hasFocus()) << "it was on no page";
    });
}

TEST_F(EditorPages, ControlTabTurnsToTheNextPageAndPassesHiddenOnes)
{
    open([&] {
        editor.Title_EDT->setFocus();
        Keys::press(&editor, Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 1);
        EXPECT_TRUE(editor.Comment_EDT->hasFocus());
        Keys::press(&editor, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 0);
        EXPECT_TRUE(editor.Title_EDT->hasFocus());
        editor.Thing_PC->setTabVisible(1, false);
        Keys::press(&editor, Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 0);
        EXPECT_TRUE(editor.Title_EDT->hasFocus());
    });
}

TEST_F(EditorPages, AGuardedPageIsRefusedOnceAndTheInputKeepsTheFocus)
{
    UserInfo.IsAdmin = true;
    SeatUser(UserInfo);
    open([&] {
        UserInfo.IsAdmin = false;
        SeatUser(UserInfo);
        editor.Title_EDT->setFocus();
        for (const auto &turn : waysToTheSecond) {
            turn();
            EXPECT_EQ(editor.Thing_PC->currentIndex(), 0);
            EXPECT_EQ(messages.take().size(), 1);
            EXPECT_TRUE(editor.Title_EDT->hasFocus());
        }
        UserInfo.IsAdmin = true;
        SeatUser(UserInfo);
    });
}

TEST_F(EditorPages, AnInputThatTakesTheFocusBackKeepsItsPage)
{
    QObject::connect(editor.Title_EDT, &TSmartEdit_ZLM::exited, &editor,
                     [&] { editor.FocusInput(editor.Title_EDT); });
    open([&] {
        editor.Title_EDT->setFocus();
        for (const auto &turn : waysToTheSecond) {
            turn();
            EXPECT_EQ(editor.Thing_PC->currentIndex(), 0);
            EXPECT_TRUE(editor.Title_EDT->hasFocus());
        }
    });
}

TEST_F(EditorPages, APassingWheelTurnsNoPage)
{
    open([&] {
        QTabBar *tabs = editor.Thing_PC->tabBar();
        const QPointF place = tabs->tabRect(0).center();
        QWheelEvent wheel(place, tabs->mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(tabs, &wheel);
        EXPECT_EQ(editor.Thing_PC->currentIndex(), 0);
    });
}

} // namespace
