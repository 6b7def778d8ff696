#include "support/Keys.h"

#include "host/Declaration_PKG/Specialmessages.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using enum TAnswer;

namespace {

QString persian(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

/// A window with two inputs, and the program's own messages.
class Dialogs : public testing::Test {
protected:
    Dialogs()
    {
        SetMessageService(nullptr);
        auto *column = new QVBoxLayout(&window);
        column->addWidget(first = new QLineEdit(&window));
        column->addWidget(second = new QLineEdit(&window));
        window.resize(500, 300);
        window.show();
        window.activateWindow();
        first->setFocus();
        EXPECT_TRUE(Keys::waitFor([&] { return first->hasFocus(); }));
    }
    static TAnswer ask(const std::function<TAnswer()> &show, const std::function<void(QWidget *)> &work)
    {
        return TAnswer(Keys::runModal([&] { return int(show()); }, work));
    }
    static void tell(const std::function<void()> &show, const std::function<void(QWidget *)> &work)
    {
        Keys::runModal(
            [&] {
                show();
                return 0;
            },
            work);
    }
    static QString caption(QWidget *dialog, const char *button)
    {
        return Keys::find<QPushButton>(dialog, button)->text().remove(u'&');
    }
    QWidget window;
    QLineEdit *first;
    QLineEdit *second;
};

TEST_F(Dialogs, AMessageStandsRightToLeftWithAPersianButton)
{
    tell([&] { MsgRequiredField(persian("عنوان"), second, &window); },
         [&](QWidget *dialog) {
             EXPECT_EQ(dialog->layoutDirection(), Qt::RightToLeft);
             EXPECT_EQ(caption(dialog, "Ok_BTN"), persian("تایید"));
             EXPECT_EQ(dialog->findChildren<QPushButton *>().size(), 1);
             EXPECT_TRUE(qobject_cast<QMessageBox *>(dialog)->text().contains(persian("عنوان")));
             EXPECT_FALSE(dialog->windowTitle().isEmpty());
             EXPECT_EQ(dialog->parentWidget(), &window);
             Keys::picture(dialog, "message_required");
             Keys::press(dialog, Qt::Key_Return);
             EXPECT_FALSE(dialog->isVisible());
         });
}

TEST_F(Dialogs, TheInputConcernedHasTheFocusAfterwards)
{
    tell([&] { MsgRequiredField("x", second, &window); },
         [](QWidget *dialog) { Keys::press(dialog, Qt::Key_Escape); });
    EXPECT_TRUE(Keys::waitFor([&] { return second->hasFocus(); }));
}

TEST_F(Dialogs, WithoutAnInputTheFocusGoesBackWhereItWas)
{
    tell([] { MsgNotEntered("x"); }, [](QWidget *dialog) { Keys::press(dialog, Qt::Key_Return); });
    EXPECT_TRUE(Keys::waitFor([&] { return first->hasFocus(); }));
}

TEST_F(Dialogs, EnterTakesTheDefaultAndEscapeWhatChangesNothing)
{
    const auto press = [](Qt::Key key) { return [key](QWidget *dialog) { Keys::press(dialog, key); }; };
    const auto deleteRow = [] { return MsgDeleteRow() ? Yes : No; };
    EXPECT_EQ(ask(deleteRow, press(Qt::Key_Return)), No);
    EXPECT_EQ(ask(deleteRow, press(Qt::Key_Escape)), No);
    EXPECT_EQ(ask(MsgNotSaved, press(Qt::Key_Return)), Yes);
    EXPECT_EQ(ask(MsgNotSaved, press(Qt::Key_Enter)), Yes);
    EXPECT_EQ(ask(MsgNotSaved, press(Qt::Key_Escape)), Cancel);
    const auto asPerson = [] { return ShowSmartMessage(20106, TMessageButtons::YesNo, Yes); };
    EXPECT_EQ(ask(asPerson, press(Qt::Key_Return)), Yes);
    EXPECT_EQ(ask(asPerson, press(Qt::Key_Escape)), No);
}

TEST_F(Dialogs, TheFirstLetterOfACaptionAnswers)
{
    const auto type = [](const char *letter) {
        return [letter](QWidget *dialog) { Keys::type(dialog, persian(letter)); };
    };
    EXPECT_EQ(ask(MsgNotSaved, type("ب")), Yes);
    EXPECT_EQ(ask(MsgNotSaved, type("خ")), No);
    EXPECT_EQ(ask(MsgNotSaved, type("ا")), Cancel);
}

TEST_F(Dialogs, OtherLettersAnswerNothing)
{
    EXPECT_EQ(ask(MsgNotSaved,
                  [](QWidget *dialog) {
                      Keys::type(dialog, persian("ز9 &"));
                      EXPECT_TRUE(dialog->isVisible());
                      Keys::press(dialog, Qt::Key_Escape);
                  }),
              Cancel);
}

TEST_F(Dialogs, TabAndArrowsWalkTheButtonsAndTheFocusTellsTheAnswer)
{
    EXPECT_EQ(ask(MsgNotSaved,
                  [](QWidget *dialog) {
                      EXPECT_TRUE(Keys::waitFor([&] { return Keys::child(dialog, "Yes_BTN")->hasFocus(); }));
                      EXPECT_EQ(caption(dialog, "Yes_BTN"), persian("بله"));
                      EXPECT_EQ(caption(dialog, "No_BTN"), persian("خیر"));
                      EXPECT_EQ(caption(dialog, "Cancel_BTN"), persian("انصراف"));
                      Keys::picture(dialog, "message_not_saved");
                      for (int i = 0; i < 3 && !Keys::child(dialog, "No_BTN")->hasFocus(); ++i)
                          Keys::press(dialog, Qt::Key_Tab);
                      Keys::press(dialog, Qt::Key_Return);
                  }),
              No);
}

TEST_F(Dialogs, WordsAreNeverMarkUp)
{
    tell([] { MsgNotEntered("<b>x</b> & <img src='file:///none'>"); },
         [](QWidget *dialog) {
             auto *box = qobject_cast<QMessageBox *>(dialog);
             EXPECT_EQ(box->textFormat(), Qt::PlainText);
             EXPECT_TRUE(box->text().contains("<b>x</b> & <img"));
             Keys::press(dialog, Qt::Key_Return);
         });
}

TEST_F(Dialogs, AVeryLongWordLeavesTheDialogOnTheScreen)
{
    tell([] { MsgNotEntered(QString(10000, QChar(0x06CC))); },
         [](QWidget *dialog) {
             EXPECT_LT(dialog->height(), 500);
             Keys::press(dialog, Qt::Key_Return);
         });
}

TEST_F(Dialogs, AMessageWhoseWindowGoesAnswersWithWhatChangesNothing)
{
    auto *owner = new QWidget;
    owner->show();
    TMessage question;
    question.shape = TMessageShape::Question;
    question.buttons = TMessageButtons::YesNo;
    question.defaultAnswer = Yes;
    question.form = owner;
    EXPECT_EQ(ask([&] { return MessageService().show(question); }, [&](QWidget *) { delete owner; }), No);
}
