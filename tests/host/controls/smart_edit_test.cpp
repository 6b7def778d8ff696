#include "host/controls/Form.h"
#include "support/ScriptedMessages.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"

#include <QToolButton>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

using Edit = TSmartEdit_ZLM;

struct SmartEdit : testing::Test {
    ScriptedMessages messages;
    Form form;

    Edit *input(Edit::Kind kind, int maxLength = 15)
    {
        Edit *edit = form.add(new Edit(nullptr, kind, maxLength));
        form.add(new QLineEdit);
        form.open();
        edit->setFocus();
        return edit;
    }
};

} // namespace

TEST_F(SmartEdit, DigitsOfAllThreeScriptsAreKeptAsLatinOnes)
{
    Edit *edit = input(Edit::Integer);
    Keys::type(edit, u"1۲٣"_s);
    EXPECT_EQ(edit->text(), u"123"_s);
    EXPECT_EQ(edit->GetValue(), QVariant(123));
}

TEST_F(SmartEdit, LettersAreNotTakenByANumber)
{
    Edit *edit = input(Edit::Number);
    Keys::type(edit, u"1aش2"_s);
    EXPECT_EQ(edit->text(), u"12"_s);
}

TEST_F(SmartEdit, AWholeNumberHasNoDecimalPoint)
{
    Edit *edit = input(Edit::Integer);
    Keys::type(edit, u"7.5"_s);
    EXPECT_EQ(edit->text(), u"75"_s);
}

TEST_F(SmartEdit, TheDecimalPointsOfTheKeyboardsAreAllAPoint)
{
    Edit *edit = input(Edit::Number);
    for (const QString &typed : {u"۷٫۳۳"_s, u"7.33"_s, u"۷/۳۳"_s}) {
        Keys::retype(edit, typed);
        EXPECT_EQ(edit->GetText(), u"7.33"_s);
        EXPECT_DOUBLE_EQ(edit->asFloat(), 7.33);
    }
    Keys::type(edit, u".1"_s);
    EXPECT_EQ(edit->text(), u"7.331"_s) << "a second point is not taken";
}

TEST_F(SmartEdit, PastedAmountsLoseSeparatorsBlanksAndCurrency)
{
    Edit *edit = input(Edit::Number);
    for (const QString &pasted : {u"1,234,567.5"_s, u"۱٬۲۳۴٬۵۶۷٫۵"_s, u" 1 234 567.5 ریال\n"_s,
                                  u"1\u00A0234\u202F567.5"_s, u"\u200E1234567.5\u200F تومان"_s}) {
        edit->Clear();
        paste(edit, pasted);
        EXPECT_EQ(edit->text(), u"1234567.5"_s) << pasted.toStdString();
    }
    EXPECT_TRUE(messages.take().isEmpty());
}

TEST_F(SmartEdit, PastedTextThatIsNoNumberIsRefusedWithAHint)
{
    Edit *edit = input(Edit::Number);
    Keys::type(edit, u"12"_s);
    paste(edit, u"'; drop table Tax --"_s);
    EXPECT_EQ(edit->text(), u"12"_s);
    EXPECT_EQ(messages.take().size(), 1);
}

TEST_F(SmartEdit, APastedNumberIsNeverCutToAnotherNumber)
{
    Edit *edit = input(Edit::Money, 5);
    paste(edit, u"1234567"_s);
    EXPECT_TRUE(edit->IsEmpty());
    EXPECT_EQ(messages.take().size(), 1);
}

TEST_F(SmartEdit, MoneyIsGroupedWhileTypingAndTheCaretStaysBehindItsDigit)
{
    Edit *edit = input(Edit::Money);
    Keys::type(edit, u"1234567"_s);
    EXPECT_EQ(edit->text(), u"1,234,567"_s);
    EXPECT_EQ(edit->cursorPosition(), 9);
    edit->setCursorPosition(3); // behind the 2 and the 3: "1,2|34"
    Keys::type(edit, u"9"_s);
    EXPECT_EQ(edit->text(), u"12,934,567"_s);
    EXPECT_EQ(edit->cursorPosition(), 4);
    EXPECT_EQ(edit->GetText(), u"12934567"_s);
    EXPECT_DOUBLE_EQ(edit->asFloat(), 12934567.0);
}

TEST_F(SmartEdit, BackspaceAndDeletePassOverASeparatorToTheDigit)
{
    Edit *edit = input(Edit::Money);
    edit->SetText(u"1234567"_s);
    edit->setCursorPosition(6); // "1,234,|567"
    Keys::press(&form, Qt::Key_Backspace);
    EXPECT_EQ(edit->text(), u"123,567"_s);
    edit->setCursorPosition(3); // "123|,567"
    Keys::press(&form, Qt::Key_Delete);
    EXPECT_EQ(edit->text(), u"12,367"_s);
}

TEST_F(SmartEdit, SeparatorsDoNotCountForTheLargestLength)
{
    Edit *edit = input(Edit::Money, 15);
    Keys::type(edit, u"1234567890123456"_s);
    EXPECT_EQ(edit->text(), u"123,456,789,012,345"_s);
}

TEST_F(SmartEdit, AMoneyInputKeepsDecimalsUngrouped)
{
    Edit *edit = input(Edit::Money);
    Keys::type(edit, u"1234.5678"_s);
    EXPECT_EQ(edit->text(), u"1,234.5678"_s);
}

TEST_F(SmartEdit, ALargerNumberThanTheRangeIsNotTaken)
{
    Edit *edit = input(Edit::Integer);
    edit->SetRange(1, 999999);
    Keys::type(edit, u"1000000"_s);
    EXPECT_EQ(edit->text(), u"100000"_s);
}

TEST_F(SmartEdit, ASmallerNumberIsRaisedWhenTheFocusLeavesAndAnEmptyInputStaysEmpty)
{
    Edit *edit = input(Edit::Integer);
    edit->SetRange(10, 99);
    Keys::type(edit, u"5"_s);
    EXPECT_EQ(edit->text(), u"5"_s);
    Keys::press(&form, Qt::Key_Tab);
    EXPECT_EQ(edit->text(), u"10"_s);
    edit->setFocus();
    Keys::retype(edit, {});
    Keys::press(&form, Qt::Key_Tab);
    EXPECT_TRUE(edit->IsEmpty());
}

TEST_F(SmartEdit, WhatTheProgramSetIsNotRaisedByPassingThrough)
{
    Edit *edit = input(Edit::Integer);
    edit->SetRange(1, 999999);
    edit->SetText(u"0"_s);
    Keys::press(&form, Qt::Key_Tab);
    EXPECT_EQ(edit->text(), u"0"_s);
}

TEST_F(SmartEdit, UpAndDownStepWithinTheRange)
{
    Edit *edit = input(Edit::Integer);
    edit->SetRange(1, 3);
    edit->SetSpin(true);
    Keys::press(&form, Qt::Key_Up);
    EXPECT_EQ(edit->text(), u"1"_s);
    for (int i = 0; i < 5; ++i)
        Keys::press(&form, Qt::Key_Up);
    EXPECT_EQ(edit->text(), u"3"_s);
    for (int i = 0; i < 5; ++i)
        Keys::press(&form, Qt::Key_Down);
    EXPECT_EQ(edit->text(), u"1"_s);
}

TEST_F(SmartEdit, SpinButtonsStepWithinBoundsOfTheirOwnAndZeroMayBeTyped)
{
    Edit *edit = input(Edit::Integer);
    edit->SetRange(0, 999999);
    edit->SetSpinRange(1, 999999);
    QApplication::processEvents();
    auto *up = edit->findChild<QToolButton *>("SpinUp");
    auto *down = edit->findChild<QToolButton *>("SpinDown");
    ASSERT_TRUE(up && down);
    EXPECT_EQ(up->geometry().right(), down->geometry().right());
    EXPECT_LT(up->geometry().bottom(), down->geometry().bottom());
    const auto changes = countChanges(edit);
    QTest::mouseClick(up, Qt::LeftButton);
    EXPECT_EQ(edit->GetText(), "1");
    EXPECT_EQ(*changes, 1);
    QTest::mouseClick(down, Qt::LeftButton);
    EXPECT_EQ(edit->GetText(), "1");
    Keys::retype(edit, "0");
    Keys::press(edit, Qt::Key_Down);
    EXPECT_EQ(edit->GetText(), "1");
    Keys::retype(edit, "0");
    EXPECT_EQ(edit->GetText(), "0");
    edit->SetText("999999");
    QTest::mouseClick(up, Qt::LeftButton);
    EXPECT_EQ(edit->GetText(), "999999");
    edit->setReadOnly(true);
    QTest::mouseClick(down, Qt::LeftButton);
    EXPECT_EQ(edit->GetText(), "999999");
}

TEST_F(SmartEdit, WithoutSpinTheArrowsDoNothing)
{
    Edit *edit = input(Edit::Integer);
    Keys::type(edit, u"5"_s);
    Keys::press(&form, Qt::Key_Up);
    EXPECT_EQ(edit->text(), u"5"_s);
}

TEST_F(SmartEdit, ANumberOnItsWayIsCompletedWhenTheFocusLeaves)
{
    Edit *edit = input(Edit::Number);
    const QList<std::pair<QString, QString>> cases{
        {u"7."_s, u"7"_s},   {u".5"_s, u"0.5"_s},    {u"007"_s, u"7"_s},
        {u"."_s, QString()}, {u"0.50"_s, u"0.50"_s},
    };
    for (const auto &[typed, left] : cases) {
        edit->setFocus();
        Keys::retype(edit, typed);
        EXPECT_EQ(edit->GetText(), left) << "even before: never anything but empty or a number";
        Keys::press(&form, Qt::Key_Tab);
        EXPECT_EQ(edit->text(), left);
    }
}

TEST_F(SmartEdit, AMinusIsTakenOnlyWhereTheRangeHasNegativeNumbers)
{
    Edit *edit = input(Edit::Integer);
    Keys::type(edit, u"-5"_s);
    EXPECT_EQ(edit->text(), u"5"_s);
    edit->SetRange(-10, 10);
    Keys::retype(edit, u"-5"_s);
    EXPECT_EQ(edit->asInteger(), -5);
}

TEST_F(SmartEdit, ValuesGoInAndComeOutByKind)
{
    Edit *number = input(Edit::Number);
    number->SetValue(7.33);
    EXPECT_EQ(number->text(), u"7.33"_s);
    EXPECT_EQ(number->GetValue().typeId(), QMetaType::Double);
    number->SetValue(QVariant());
    EXPECT_TRUE(number->IsEmpty());
    EXPECT_TRUE(number->GetValue().isNull());
    Edit money(nullptr, Edit::Money, 15);
    money.SetValue(1234567.5);
    EXPECT_EQ(money.text(), u"1,234,567.5"_s);
    EXPECT_EQ(money.GetText(), u"1234567.5"_s);
    money.SetValue(123456789012345.0);
    EXPECT_EQ(money.text(), u"123,456,789,012,345"_s);
    Edit whole(nullptr, Edit::Integer, 15);
    whole.SetValue(42);
    EXPECT_EQ(whole.GetValue(), QVariant(42));
    Edit text(nullptr, Edit::Text, 50);
    text.SetValue(u"متن"_s);
    EXPECT_EQ(text.GetValue(), QVariant(u"متن"_s));
}

TEST_F(SmartEdit, AWholeNumberNeverExceedsWhatAnIntegerColumnHolds)
{
    Edit *edit = input(Edit::Integer, 15);
    Keys::type(edit, u"99999999999"_s);
    EXPECT_EQ(edit->asInteger(), 999999999);
}

TEST_F(SmartEdit, ANumberIsLaidOutLeftToRightAndATextRightToLeft)
{
    EXPECT_EQ(input(Edit::Money)->layoutDirection(), Qt::LeftToRight);
    Edit text(nullptr, Edit::Text, 50);
    EXPECT_EQ(text.layoutDirection(), Qt::RightToLeft);
}

TEST_F(SmartEdit, ATextKeepsEverythingThatIsTyped)
{
    Edit *edit = input(Edit::Text, 200);
    const QString typed =
        u"می\u200Cخواهم 'O''Brien'; -- \"x\" [%_] ۱٢3 ي ی ك ک \U0001F469\u200D\U0001F4BB <&>"_s;
    Keys::type(edit, typed);
    EXPECT_EQ(edit->text(), typed);
    EXPECT_EQ(edit->GetText(), typed);
}

TEST_F(SmartEdit, LineBreaksAndTabsBecomeBlanksAndControlCharactersGo)
{
    Edit *edit = input(Edit::Text, 50);
    paste(edit, u"یک\r\nدو\nسه\tچهار\u2028پنج\u0007"_s);
    EXPECT_EQ(edit->text(), u"یک دو سه چهار پنج"_s);
    EXPECT_EQ(edit->cursorPosition(), edit->text().size());
}

TEST_F(SmartEdit, TenThousandPastedCharactersAreCutWithAHint)
{
    Edit *edit = input(Edit::Text, 50);
    paste(edit, QString(10000, QChar(0x0634)));
    EXPECT_EQ(edit->text(), QString(50, QChar(0x0634)));
    EXPECT_EQ(messages.take().size(), 1);
    EXPECT_EQ(messages.last().control, edit);
    EXPECT_EQ(messages.last().shape, TMessageShape::Balloon);
}

TEST_F(SmartEdit, APasteIntoTheMiddleIsCutItselfAndNotWhatStoodThere)
{
    Edit *edit = input(Edit::Text, 10);
    Keys::type(edit, u"abcdef"_s);
    edit->setCursorPosition(3);
    paste(edit, u"123456789"_s);
    EXPECT_EQ(edit->text(), u"abc1234def"_s);
    EXPECT_EQ(edit->cursorPosition(), 7);
}

TEST_F(SmartEdit, AFullTextTakesNoMoreKeysAndKeepsWhatStandsBehindTheCaret)
{
    Edit *edit = input(Edit::Text, 5);
    Keys::type(edit, u"abcde"_s);
    edit->setCursorPosition(2);
    Keys::type(edit, u"X"_s);
    EXPECT_EQ(edit->text(), u"abcde"_s);
    EXPECT_EQ(edit->cursorPosition(), 2);
    EXPECT_TRUE(messages.take().isEmpty());
}

TEST_F(SmartEdit, AnEmojiCountsAsOneCharacterAndIsNeverCutInTwo)
{
    Edit *edit = input(Edit::Text, 3);
    const QString emoji = u"\U0001F600"_s;
    paste(edit, emoji.repeated(10));
    EXPECT_EQ(edit->text(), emoji.repeated(3));
    Keys::type(edit, emoji);
    EXPECT_EQ(edit->text(), emoji.repeated(3));
    const QString family = u"\U0001F469\u200D\U0001F469\u200D\U0001F467"_s;
    edit->SetMaxLength(6);
    edit->Clear();
    paste(edit, family + family);
    EXPECT_EQ(edit->text(), family) << "a joined picture goes as a whole";
}

TEST_F(SmartEdit, AStoredTextThatIsLongerStaysWholeAndCanBeShortened)
{
    Edit *edit = input(Edit::Text, 5);
    edit->SetText(u"abcdefgh"_s);
    EXPECT_EQ(edit->text(), u"abcdefgh"_s);
    edit->setCursorPosition(8);
    Keys::type(edit, u"X"_s);
    EXPECT_EQ(edit->text(), u"abcdefgh"_s);
    Keys::press(&form, Qt::Key_Backspace);
    EXPECT_EQ(edit->text(), u"abcdefg"_s);
}

TEST_F(SmartEdit, EveryChangeIsToldOnceWhoeverMadeIt)
{
    Edit *edit = input(Edit::Money);
    const auto changes = countChanges(edit);
    Keys::type(edit, u"1234"_s);
    EXPECT_EQ(*changes, 4);
    edit->SetText(u"5"_s);
    EXPECT_EQ(*changes, 5);
    edit->SetText(u"5"_s);
    EXPECT_EQ(*changes, 5) << "nothing changed";
    Keys::type(edit, u"x"_s);
    EXPECT_EQ(*changes, 5) << "nothing was taken";
    edit->Clear();
    EXPECT_EQ(*changes, 6);
}

TEST_F(SmartEdit, ExitedTellsThatTheFocusWentToAnotherInputOfTheWindow)
{
    Edit *edit = input(Edit::Text);
    int exits = 0;
    QObject::connect(edit, &Edit::exited, edit, [&] { ++exits; });
    Keys::press(&form, Qt::Key_Tab);
    EXPECT_EQ(exits, 1);
    EXPECT_FALSE(edit->hasFocus());
}

TEST_F(SmartEdit, AnotherWindowAndAClosingWindowAreNoExit)
{
    Edit *edit = input(Edit::Text);
    int exits = 0;
    QObject::connect(edit, &Edit::exited, edit, [&] { ++exits; });
    {
        Form other;
        other.add(new QLineEdit);
        other.open();
    }
    form.activateWindow();
    edit->setFocus();
    form.close();
    QApplication::processEvents();
    EXPECT_EQ(exits, 0);
}

TEST_F(SmartEdit, TheExitHandlerMayTakeTheFocusBack)
{
    Edit *edit = input(Edit::Text);
    QObject::connect(edit, &Edit::exited, edit, [&] { edit->setFocus(); });
    Keys::press(&form, Qt::Key_Tab);
    EXPECT_TRUE(edit->hasFocus());
}

TEST_F(SmartEdit, AltWithALetterTypesNothing)
{
    Edit *edit = input(Edit::Text);
    Keys::press(&form, Qt::Key_unknown, Qt::AltModifier, u"ش"_s);
    EXPECT_TRUE(edit->text().isEmpty());
}

namespace {

struct GuardCase {
    const char *typed;
    const char *left;
};

} // namespace

struct PercentGuard : SmartEdit, testing::WithParamInterface<GuardCase> {};

TEST_P(PercentGuard, TypedSharesNeverExceedOneHundred)
{
    Edit *edit = input(Edit::Number);
    QObject::connect(edit, &Edit::changed, edit, [edit] { GuardPercent(edit, true); });
    Keys::type(edit, QString::fromUtf8(GetParam().typed));
    EXPECT_EQ(edit->text(), QString::fromUtf8(GetParam().left));
}

INSTANTIATE_TEST_SUITE_P(Shares, PercentGuard,
                         testing::Values(GuardCase{"150", "15"}, GuardCase{"100", "100"},
                                         GuardCase{"100.5", "10.5"}, GuardCase{"99.5", "99.5"},
                                         GuardCase{"۱۵۰", "15"}, GuardCase{"7", "7"}));

TEST_F(SmartEdit, TheGuardPutsTheCaretWhereTheScreenWantsIt)
{
    Edit *edit = input(Edit::Number);
    edit->SetText(u"100.5"_s);
    GuardPercent(edit, false);
    EXPECT_EQ(edit->text(), u"10.5"_s);
    EXPECT_EQ(edit->cursorPosition(), 4) << "the old length minus 1";
    edit->SetText(u"150"_s);
    GuardPercent(edit, true);
    EXPECT_EQ(edit->cursorPosition(), 2);
}

TEST_F(SmartEdit, APastedShareIsGuardedAsWell)
{
    Edit *edit = input(Edit::Number);
    QObject::connect(edit, &Edit::changed, edit, [edit] { GuardPercent(edit, false); });
    paste(edit, u"9999"_s);
    EXPECT_EQ(edit->text(), u"99"_s);
}

TEST_F(SmartEdit, ALongTextShowsItsBeginningUntilItIsEdited)
{
    Edit *edit = input(Edit::Text, 200);
    const QString address = u"تهران، جاده مخصوص کرج، کیلومتر 14، خیابان صنعت، پلاک 25 "_s.repeated(3);
    Keys::type(edit, address);
    EXPECT_EQ(edit->cursorPosition(), address.size()) << "the end is where one types";
    Keys::press(edit, Qt::Key_Tab);
    EXPECT_EQ(edit->cursorPosition(), 0);
    edit->SetText(address + address);
    EXPECT_EQ(edit->cursorPosition(), 0);
    edit->grab(); // painting scrolls
    EXPECT_LE(edit->cursorPositionAt({edit->width() - 8, edit->height() / 2}), 1) << "on the right";
}
