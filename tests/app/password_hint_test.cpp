#include "Screens.h"

#include "app/Login_FRM.h"
#include "app/Users_FRM.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace {

// What a keyboard sends with Caps Lock on: a capital letter without Shift, a small one with it.
void key(QLineEdit *input, const QString &letter, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const int code = letter.at(0).toUpper().unicode();
    QKeyEvent press(QEvent::KeyPress, code, modifiers, letter);
    QKeyEvent release(QEvent::KeyRelease, code, modifiers, letter);
    QApplication::sendEvent(input, &press);
    QApplication::sendEvent(input, &release);
}

QString hint(QLineEdit *input)
{
    const auto *label = input->window()->findChild<QLabel *>(input->objectName() + "_Hint_LBL");
    return label && label->isVisible() ? label->text() : QString();
}

void hintsAreShown(QLineEdit *input)
{
    const std::string where = (input->window()->objectName() + ' ' + input->objectName()).toStdString();
    EXPECT_EQ(hint(input), QString()) << where;
    key(input, u"a"_s);
    EXPECT_EQ(hint(input), QString()) << where;
    key(input, u"A"_s);
    EXPECT_EQ(hint(input), u"کلید Caps Lock روشن است"_s) << where;
    key(input, u"A"_s, Qt::ShiftModifier);
    EXPECT_EQ(hint(input), QString()) << where;
    key(input, u"a"_s, Qt::ShiftModifier);
    EXPECT_EQ(hint(input), u"کلید Caps Lock روشن است"_s) << where;
    QKeyEvent capsLock(QEvent::KeyPress, Qt::Key_CapsLock, Qt::NoModifier);
    QApplication::sendEvent(input, &capsLock);
    EXPECT_EQ(hint(input), QString()) << where;
    key(input, u"ش"_s);
    EXPECT_EQ(hint(input), u"صفحه کلید فارسی است"_s) << where;
    key(input, u"7"_s);
    EXPECT_EQ(hint(input), u"صفحه کلید فارسی است"_s) << where;
    key(input, u"a"_s);
    EXPECT_EQ(hint(input), QString()) << where;
    EXPECT_TRUE(input->toolTip().contains(u"یکی نیستند"_s)) << where;
    EXPECT_EQ(input->accessibleDescription(), input->toolTip()) << where;
    key(input, u"B"_s);
    QApplication::processEvents();
    const auto *label = input->window()->findChild<QLabel *>(input->objectName() + "_Hint_LBL");
    const QRect place(label->mapTo(input->window(), QPoint()), label->size());
    const QRect typed(input->mapTo(input->window(), QPoint()), input->size());
    EXPECT_TRUE(input->window()->rect().contains(place)) << where;
    EXPECT_LT(std::abs(place.top() - typed.bottom()), 20) << where << ": beside its input";
    key(input, u"ش"_s);
    Keys::picture(input->window(), "hint-" + input->window()->objectName());
}

TEST_F(Screens, CapsLockAndThePersianKeyboardAreShownWhereverAPasswordIsTyped)
{
    TLogin_FRM login("ali");
    TFirstUser_FRM first;
    TChangePassword_FRM change;
    TUserGet_FRM editor(0);
    const auto look = [&](TBaseForm &screen, std::initializer_list<QLineEdit *> inputs) {
        Keys::runModal([&] { return screen.exec(); },
                       [&](QWidget *) {
                           for (QLineEdit *input : inputs)
                               hintsAreShown(input);
                           messages.answer({TAnswer::No});
                       });
    };
    look(login, {login.Password_EDT});
    look(first, {first.Password_EDT, first.Repeat_EDT});
    look(change, {change.Old_EDT, change.New_EDT, change.Repeat_EDT});
    look(editor, {editor.Password_EDT, editor.Repeat_EDT});
}

TEST_F(Screens, AWeakNewPasswordIsToldWithTheReasonAndTheFocusGoesBackToIt)
{
    user("boss", "secret-b0qx2", true);
    TUserGet_FRM editor(0);
    Keys::runModal([&] { return editor.exec(); },
                   [&](QWidget *screen) {
                       Keys::retype(editor.Name_EDT, "zandipour");
                       Keys::retype(editor.Password_EDT, "zandipour12");
                       Keys::retype(editor.Repeat_EDT, "zandipour12");
                       Keys::press(screen, Qt::Key_F3);
                       const std::string why = told();
                       EXPECT_NE(why.find("نام کاربر"), std::string::npos) << why;
                       EXPECT_NE(why.find("وارد کنید"), std::string::npos) << why;
                       EXPECT_EQ(screen->focusWidget(), editor.Password_EDT);
                       EXPECT_EQ(editor.Name_EDT->text(), "zandipour") << "what was typed stays";
                       messages.answer({TAnswer::No});
                   });
    EXPECT_EQ(text("select count(*) from UserAccount"), "1");
}

} // namespace
