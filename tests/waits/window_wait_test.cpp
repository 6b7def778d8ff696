#include "waits/Waits.h"

namespace {

class WindowWait : public Waits {
protected:
    static int open(QDialog &screen, const std::function<void()> &work)
    {
        return Keys::runModal([&] { return screen.exec(); },
                              [&](QWidget *shown) {
                                  Keys::waitFor([&] { return shown->isActiveWindow(); });
                                  work();
                              });
    }
};

TEST_F(WindowWait, AnEditorThatSavesOverASlowLineIsAliveAndSaysWhatItWaitsFor)
{
    employees(3);
    goBehindLine();
    TStaffGet_FRM editor(cspStaff, 2, fmEdit, false);
    open(editor, [&] {
        Keys::retype(editor.Name_EDT, u"رضا"_s);
        play->setDelay(120);
        QString said;
        whenPanel([&] {
            said = panel()->findChild<QLabel *>()->text();
            Keys::picture(&editor, "waiting");
        });
        TurnWatch watch;
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_LE(watch.longest(), 50);
        EXPECT_EQ(said, u"در انتظار پاسخ سرور…\nبرای چشم پوشی از این کار Esc را بزنید."_s);
        play->setDelay(0);
        EXPECT_FALSE(panel());
    });
    EXPECT_EQ(stored("select Name from Staff where Code=2"), u"رضا"_s);
}

TEST_F(WindowWait, WhatIsTypedDuringAWaitArrivesInItsOrder)
{
    employees(3);
    goBehindLine();
    TStaffGet_FRM editor(cspStaff, 2, fmEdit, false);
    open(editor, [&] {
        Keys::retype(editor.Name_EDT, u"a"_s);
        play->setDelay(120);
        whenPanel([&] {
            for (const char letter : {'b', 'c', 'd', 'e'})
                pressInFront(Qt::Key(letter - 'a' + Qt::Key_A), QString(QLatin1Char(letter)));
            EXPECT_EQ(editor.Name_EDT->text(), "a");
        });
        editor.Name_EDT->setFocus();
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        play->setDelay(0);
        QWidget *input = editor.focusWidget();
        ASSERT_TRUE(qobject_cast<QLineEdit *>(input));
        EXPECT_TRUE(Keys::waitFor([&] {
            return qobject_cast<QLineEdit *>(editor.focusWidget())->text().endsWith("bcde");
        })) << editor.Name_EDT->text().toStdString();
        messages.answer({TAnswer::No}); // the letters are not saved
    });
    EXPECT_EQ(stored("select Name from Staff where Code=2"), "a");
}

TEST_F(WindowWait, EscGivesASilentSaveUpAndTheInputsStayAsTyped)
{
    employees(3);
    goBehindLine();
    TStaffGet_FRM editor(cspStaff, 2, fmEdit, false);
    open(editor, [&] {
        Keys::retype(editor.Name_EDT, u"رضا"_s);
        messages.take();
        play->goSilentAt(3);
        whenPanel([&] { pressInFront(Qt::Key_Escape); });
        TurnWatch watch;
        QElapsedTimer timer;
        timer.start();
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_LT(timer.elapsed(), 4000);
        EXPECT_LE(watch.longest(), 50);
        EXPECT_FALSE(messages.take().isEmpty());
        EXPECT_TRUE(editor.isVisible());
        EXPECT_EQ(editor.Name_EDT->text(), u"رضا"_s);
        EXPECT_EQ(stored("select Name from Staff where Code=2"), u"نام 2"_s);
        play->speak();
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(stored("select Name from Staff where Code=2"), u"رضا"_s);
    });
}

TEST_F(WindowWait, AServerThatHearsTheCancelKeepsItsLine)
{
    employees(3);
    goBehindLine();
    TStaffGet_FRM editor(cspStaff, 2, fmEdit, false);
    open(editor, [&] {
        Keys::retype(editor.Name_EDT, u"رضا"_s);
        const int connects = play->connects();
        play->setHearsCancel(true);
        play->goSilentAt(3);
        whenPanel([&] { pressInFront(Qt::Key_Escape); });
        QElapsedTimer timer;
        timer.start();
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_LT(timer.elapsed(), 1500);
        EXPECT_EQ(play->connects(), connects);
        play->speak();
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(stored("select Name from Staff where Code=2"), u"رضا"_s);
    });
}

TEST_F(WindowWait, AWindowIsClosedAfterTheWaitNotWithinIt)
{
    employees(3);
    goBehindLine();
    TStaffGet_FRM editor(cspStaff, 2, fmEdit, false);
    open(editor, [&] {
        Keys::retype(editor.Name_EDT, u"رضا"_s);
        play->setDelay(120);
        whenPanel([&] {
            editor.close();
            EXPECT_TRUE(editor.isVisible());
        });
        Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        play->setDelay(0);
        EXPECT_TRUE(Keys::waitFor([&] { return !editor.isVisible(); }));
    });
    EXPECT_EQ(stored("select Name from Staff where Code=2"), u"رضا"_s);
}

} // namespace
