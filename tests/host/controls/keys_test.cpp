#include "host/controls/Form.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>

#include <gtest/gtest-spi.h>

using namespace Qt::Literals::StringLiterals;

TEST(Keys, APersianTextIsTypedCharacterByCharacter)
{
    Form form;
    auto *edit = form.add(new QLineEdit);
    form.open();
    int edits = 0;
    QObject::connect(edit, &QLineEdit::textEdited, edit, [&] { ++edits; });
    Keys::type(edit, u"مي\u200Cخ 😀1a"_s);
    EXPECT_EQ(edit->text(), u"مي\u200Cخ 😀1a"_s);
    EXPECT_EQ(edits, 8) << "a character beyond the first plane is one key";
    Keys::retype(edit, u"ب"_s);
    EXPECT_EQ(edit->text(), u"ب"_s);
    Keys::retype(edit, {});
    EXPECT_TRUE(edit->text().isEmpty());
}

TEST(Keys, AKeyGoesToTheInputThatHasTheFocus)
{
    Form form;
    auto *first = form.add(new QLineEdit);
    auto *second = form.add(new QLineEdit);
    form.open();
    first->setFocus();
    Keys::press(&form, Qt::Key_Tab);
    Keys::press(&form, Qt::Key_A);
    Keys::press(&form, Qt::Key_B, Qt::ShiftModifier);
    EXPECT_TRUE(first->text().isEmpty());
    EXPECT_EQ(second->text(), u"aB"_s);
}

TEST(Keys, AKeyGoesToAnOpenListFirst)
{
    Form form;
    auto *combo = form.add(new QComboBox);
    combo->addItems({u"یک"_s, u"دو"_s});
    form.open();
    combo->setFocus();
    combo->showPopup();
    ASSERT_TRUE(QApplication::activePopupWidget());
    Keys::press(&form, Qt::Key_Down);
    Keys::press(&form, Qt::Key_Return);
    EXPECT_EQ(combo->currentIndex(), 1);
    EXPECT_TRUE(Keys::waitFor([] { return !QApplication::activePopupWidget(); }));
}

TEST(Keys, ADisabledInputTakesNoKeys)
{
    Form form;
    auto *edit = form.add(new QLineEdit);
    edit->setEnabled(false);
    form.open();
    Keys::type(edit, u"a"_s);
    EXPECT_TRUE(edit->text().isEmpty());
}

TEST(Keys, AModalScreenIsWorkedInAndGivesItsResult)
{
    QDialog dialog;
    new QLineEdit(&dialog);
    const int result = Keys::runModal([&] { return dialog.exec(); },
                                      [&](QWidget *screen) {
                                          EXPECT_EQ(screen, &dialog);
                                          dialog.done(7);
                                      });
    EXPECT_EQ(result, 7);
}

TEST(Keys, AModalScreenMayOpenAnother)
{
    QDialog outer;
    QDialog inner;
    const int result = Keys::runModal([&] { return outer.exec(); },
                                      [&](QWidget *) {
                                          const int second = Keys::runModal([&] { return inner.exec(); },
                                                                            [&](QWidget *screen) {
                                                                                EXPECT_EQ(screen, &inner);
                                                                                inner.done(3);
                                                                            });
                                          EXPECT_EQ(second, 3);
                                          EXPECT_TRUE(outer.isVisible());
                                          outer.done(4);
                                      });
    EXPECT_EQ(result, 4);
}

TEST(Keys, AScreenThatComesLateIsWaitedFor)
{
    QDialog dialog;
    bool worked = false;
    Keys::runModal(
        [&] {
            QTest::qWait(150);
            return dialog.exec();
        },
        [&](QWidget *) { worked = true; });
    EXPECT_TRUE(worked);
}

TEST(Keys, AScreenLeftOpenIsClosedEvenWhenItRefuses)
{
    struct Stubborn : QDialog {
        void closeEvent(QCloseEvent *event) override { event->ignore(); }
        void reject() override {}
    } dialog;
    Keys::runModal([&] { return dialog.exec(); }, [](QWidget *) {});
    EXPECT_FALSE(dialog.isVisible());
}

TEST(Keys, AChildThatIsMissingEndsTheTestAndNotTheProgram)
{
    QDialog dialog;
    dialog.setObjectName(u"screen"_s);
    EXPECT_THROW(Keys::runModal([&] { return dialog.exec(); },
                                [](QWidget *screen) { Keys::child(screen, u"None_EDT"_s); }),
                 std::runtime_error);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(Keys::child(&dialog, u"screen"_s), &dialog);
}

namespace {

void showNothing()
{
    Keys::runModal([] { return 0; }, [](QWidget *) {});
}

} // namespace

TEST(Keys, AScreenThatIsNotShownFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(showNothing(), "the screen was not shown");
}

TEST(Keys, WaitingEnds)
{
    EXPECT_FALSE(Keys::waitFor([] { return false; }, 20));
    bool done = false;
    QTimer::singleShot(10, [&] { done = true; });
    EXPECT_TRUE(Keys::waitFor([&] { return done; }));
}
