#include "support/Keys.h"

#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Message_ZLM/Balloon.h"
#include "host/Message_ZLM/Message_ZLM.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

QString persian(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

class Balloons : public testing::Test {
protected:
    Balloons()
    {
        SetMessageService(nullptr);
        auto *column = new QVBoxLayout(&window);
        column->addWidget(pages = new QTabWidget(&window));
        auto *page = new QWidget;
        auto *inputs = new QVBoxLayout(page);
        inputs->addWidget(first = new QLineEdit(page));
        inputs->addWidget(second = new QLineEdit(page));
        pages->addTab(page, "1");
        pages->addTab(new QWidget, "2");
        window.resize(500, 300);
        window.show();
        window.activateWindow();
        first->setFocus();
        EXPECT_TRUE(Keys::waitFor([&] { return first->hasFocus(); }));
    }
    ~Balloons() override { TBalloon::closeCurrent(); }
    static bool gone(int milliseconds = 2000)
    {
        return Keys::waitFor([] { return !TBalloon::current(); }, milliseconds);
    }
    static void settle() { QTest::qWait(20); }

    QWidget window;
    QTabWidget *pages;
    QLineEdit *first;
    QLineEdit *second;
};

TEST_F(Balloons, ABalloonStopsNothingAndTakesNoFocus)
{
    QElapsedTimer clock;
    clock.start();
    ShowTooltipMessage(persian("جدول مالیاتی با این کد ثبت نشده است"), second);
    EXPECT_LT(clock.elapsed(), 1000) << "it came back at once";
    ASSERT_TRUE(TBalloon::current());
    EXPECT_TRUE(TBalloon::current()->isVisible());
    EXPECT_FALSE(TBalloon::current()->isModal());
    settle();
    EXPECT_TRUE(first->hasFocus());
    EXPECT_EQ(QApplication::activeWindow(), &window);
    EXPECT_EQ(TBalloon::current()->text(), persian("جدول مالیاتی با این کد ثبت نشده است"));
    Keys::picture(TBalloon::current(), "balloon_tooltip");
}

TEST_F(Balloons, ItStandsBesideItsInput)
{
    ShowSmartMessage(10233, second, &window, 3000);
    const QRect input(second->mapToGlobal(QPoint(0, 0)), second->size());
    const QRect balloon = TBalloon::current()->frameGeometry();
    EXPECT_FALSE(balloon.intersects(input));
    EXPECT_EQ(balloon.right(), input.right()) << "where a right-to-left text begins";
    EXPECT_LT(balloon.top() - input.bottom(), 20);
    EXPECT_EQ(TBalloon::current()->layoutDirection(), Qt::RightToLeft);
}

TEST_F(Balloons, ItStaysOnTheScreen)
{
    const QRect screen = window.screen()->availableGeometry();
    for (const QPoint &corner :
         {screen.topLeft(), screen.bottomRight() - QPoint(500, 300), QPoint(-400, -250)}) {
        window.move(corner);
        QApplication::processEvents();
        ShowTooltipMessage(persian("جدول مالیاتی با این کد ثبت نشده است"), second);
        EXPECT_TRUE(screen.contains(TBalloon::current()->frameGeometry()));
    }
}

TEST_F(Balloons, TheNextKeyTakesItAwayAndStillArrives)
{
    ShowTooltipMessage("x", second);
    settle();
    ASSERT_TRUE(TBalloon::current());
    Keys::type(first, "a");
    EXPECT_TRUE(gone());
    EXPECT_EQ(first->text(), "a");
}

TEST_F(Balloons, TheKeyThatBroughtItUpDoesNotTakeItAway)
{
    // Like F3 that validates: the key goes on to the input's parents after the message was shown.
    struct Raiser : QObject {
        std::function<void()> raise;
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::KeyPress)
                raise();
            return false;
        }
    } raiser;
    raiser.raise = [this] { ShowTooltipMessage("x", second); };
    pages->installEventFilter(&raiser);
    QTest::sendKeyEvent(QTest::Click, pages, Qt::Key_F3, QString(), Qt::NoModifier);
    EXPECT_TRUE(TBalloon::current());
    pages->removeEventFilter(&raiser);
}

TEST_F(Balloons, AClickTakesItAway)
{
    ShowTooltipMessage("x", second);
    settle();
    QTest::mouseClick(first, Qt::LeftButton);
    EXPECT_TRUE(gone());
    ShowTooltipMessage("x", second);
    settle();
    QTest::mouseClick(TBalloon::current(), Qt::LeftButton);
    EXPECT_TRUE(gone());
}

TEST_F(Balloons, ItGoesAfterItsTime)
{
    ShowTooltipMessage("x", second, 150);
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(gone());
    EXPECT_GE(clock.elapsed(), 100);
    EXPECT_LT(clock.elapsed(), 1500);
}

TEST_F(Balloons, ItGoesWithItsInput)
{
    ShowTooltipMessage("x", second);
    settle();
    second->hide();
    EXPECT_TRUE(gone());
    second->show();
    ShowTooltipMessage("x", second);
    pages->setCurrentIndex(1);
    EXPECT_TRUE(gone());
    pages->setCurrentIndex(0);
    ShowTooltipMessage("x", second);
    delete second;
    EXPECT_TRUE(gone());
    ShowTooltipMessage("x", first);
    window.hide();
    EXPECT_TRUE(gone());
}

TEST_F(Balloons, AWindowThatIsDestroyedTakesItAlong)
{
    auto *other = new QLineEdit;
    other->show();
    ShowTooltipMessage("x", other);
    ASSERT_TRUE(TBalloon::current());
    delete other;
    EXPECT_EQ(TBalloon::current(), nullptr);
}

TEST_F(Balloons, ItFollowsAnInputThatIsMoved)
{
    ShowTooltipMessage("x", second);
    const QPoint before = TBalloon::current()->pos();
    window.move(window.pos() + QPoint(40, 30));
    EXPECT_TRUE(Keys::waitFor([&] { return TBalloon::current() && TBalloon::current()->pos() != before; }));
}

TEST_F(Balloons, ANewOneTakesThePlaceOfTheOld)
{
    ShowTooltipMessage("one", first);
    const QPointer<TBalloon> one = TBalloon::current();
    ShowTooltipMessage("two", second);
    EXPECT_EQ(TBalloon::current()->text(), "two");
    EXPECT_TRUE(Keys::waitFor([&] { return !one; }));
}

TEST_F(Balloons, AnInputOnAnotherPageIsWaitedFor)
{
    pages->setCurrentIndex(1);
    ShowSmartMessage(10234, second, &window, 3000);
    pages->setCurrentIndex(0); // the screen turns to the page of the input that failed
    EXPECT_TRUE(Keys::waitFor([] { return TBalloon::current() != nullptr; }));
    EXPECT_LT(TBalloon::current()->frameGeometry().top() -
                  QRect(second->mapToGlobal(QPoint(0, 0)), second->size()).bottom(),
              20);
}

TEST_F(Balloons, ASuccessfulSaveIsShownWithoutAKey)
{
    MSGCompeletedSuccessfully(persian("ذخيره سازي "));
    EXPECT_TRUE(Keys::waitFor([] { return TBalloon::current() != nullptr; }));
    EXPECT_TRUE(first->hasFocus());
    EXPECT_TRUE(window.frameGeometry().contains(TBalloon::current()->frameGeometry().center()));
    Keys::picture(TBalloon::current(), "balloon_saved");
    EXPECT_TRUE(gone(4000));
}

TEST_F(Balloons, ALongTextIsWrappedAndNothingIsCutOff)
{
    ShowTooltipMessage(persian("تاریخ ترک کار نمی تواند از تاریخ استخدام کوچکتر باشد."), second, 3000, 4,
                       QColor(192, 192, 192), 0, 250);
    TBalloon *balloon = TBalloon::current();
    EXPECT_LE(balloon->width(), 260);
    EXPECT_GT(balloon->height(), 2 * balloon->fontMetrics().height());
    Keys::picture(balloon, "balloon_wrapped");
}

TEST_F(Balloons, WordsAreNeverMarkUp)
{
    ShowTooltipMessage("<b>x</b>", second);
    EXPECT_EQ(TBalloon::current()->text(), "<b>x</b>");
    EXPECT_GT(TBalloon::current()->width(), TBalloon::current()->fontMetrics().horizontalAdvance("<b>x</b>"));
}

TEST_F(Balloons, AWindowThatClosesAsItsBalloonComesUpLeavesItToTheOneBehind)
{
    QDialog list(&window);
    auto *button = new QPushButton("x", &list);
    list.setModal(true);
    list.show();
    ASSERT_TRUE(Keys::waitFor([&] { return list.isActiveWindow(); }));
    ShowSmartMessage(10122, button, &list, 3000);
    ASSERT_TRUE(TBalloon::current());
    list.done(QDialog::Accepted);
    ASSERT_TRUE(Keys::waitFor([] { return TBalloon::current() && TBalloon::current()->isVisible(); }));
    EXPECT_EQ(TBalloon::current()->text(), persian("آیتمی را که مبلغ آن صفر است نمی توان اضافه کرد."));
    EXPECT_EQ(TBalloon::current()->parentWidget(), &window);

    // One that was there to be read goes with its window.
    list.show();
    ShowSmartMessage(10122, button, &list, 3000);
    settle();
    list.done(QDialog::Accepted);
    settle();
    EXPECT_FALSE(TBalloon::current());
}

TEST_F(Balloons, ADialogThatComesRightAfterABalloonDoesNotTakeItAway)
{
    ShowSmartMessage(10122, first, &window, 3000);
    Keys::runModal(
        [&] {
            ShowSmartMessage(persian("سطر دوم پذیرفته نشد"), {}, miWarning);
            return 0;
        },
        [&](QWidget *dialog) {
            EXPECT_FALSE(TBalloon::current());
            Keys::press(dialog, Qt::Key_Return);
        });
    ASSERT_TRUE(TBalloon::current());
    EXPECT_EQ(TBalloon::current()->text(), persian("آیتمی را که مبلغ آن صفر است نمی توان اضافه کرد."));
}
