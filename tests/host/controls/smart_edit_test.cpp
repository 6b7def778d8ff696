#include "host/controls/Form.h"
#include "support/ScriptedMessages.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"

#include <QToolButton>

#include <gtest/gtest.h>

#include <memory>

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
    Keys::type(edit, QStringLiteral("1۲٣"));
    EXPECT_EQ(edit->text(), QStringLiteral("123"));
    EXPECT_EQ(edit->GetValue(), QVariant(123));
}

TEST_F(SmartEdit, LettersAreNotTakenByANumber)
{
    Edit *edit = input(Edit::Number);
    Keys::type(edit, QStringLiteral("1aش2"));
    EXPECT_EQ(edit->text(), QStringLiteral("12"));
}

TEST_F(SmartEdit, AWholeNumberHasNoDecimalPoint)
{
    Edit *edit = input(Edit::Integer);
    Keys::type(edit, QStringLiteral("7.5"));
    EXPECT_EQ(edit->text(), QStringLiteral("75"));
}

TEST_F(SmartEdit, TheDecimalPointsOfTheKeyboardsAreAllAPoint)
{
    Edit *edit = input(Edit::Number);
    for (const QString &typed : {QStringLiteral("۷٫۳۳"), QStringLiteral("7.33"), QStringLiteral("۷/۳۳")}) {
        Keys::retype(edit, typed);
        EXPECT_EQ(edit->GetText(), QStringLiteral("7.33"));
        EXPECT_DOUBLE_EQ(edit->asFloat(), 7.33);
    }
    Keys::type(edit, QStringLiteral(".1"));
    EXPECT_EQ(edit->text(), QStringLiteral("7.331")) << "a second point is not taken";
}

TEST_F(SmartEdit, PastedAmountsLoseSeparatorsBlanksAndCurrency)
{
    Edit *edit = input(Edit::Number);
    for (const QString &pasted :
         {QStringLiteral("1,234,567.5"), QStringLiteral("۱٬۲۳۴٬۵۶۷٫۵"), QStringLiteral(" 1 234 567.5 ریال\n"),
          QStringLiteral("1\u00A0234\u202F567.5"), QStringLiteral("\u200E1234567.5\u200F تومان")}) {
        edit->Clear();
        paste(edit, pasted);
        EXPECT_EQ(edit->text(), QStringLiteral("1234567.5")) << pasted.toStdString();
    }
    EXPECT_TRUE(messages.take().isEmpty());
}

TEST_F(SmartEdit, PastedTextThatIsNoNumberIsRefusedWithAHint)
{
    Edit *edit = input(Edit::Number);
    Keys::type(edit, QStringLiteral("12"));
    paste(edit, QStringLiteral("'; drop table Tax --"));
    EXPECT_EQ(edit->text(), QStringLiteral("12"));
    EXPECT_EQ(messages.take().size(), 1);
}

TEST_F(SmartEdit, APastedNumberIsNeverCutToAnotherNumber)
{
    Edit *edit = input(Edit::Money, 5);
    paste(edit, QStringLiteral("1234567"));
    EXPECT_TRUE(edit->IsEmpty());
    EXPECT_EQ(messages.take().size(), 1);
}

TEST_F(SmartEdit, MoneyIsGroupedWhileTypingAndTheCaretStaysBehindItsDigit)
{
    Edit *edit = input(Edit::Money);
    Keys::type(edit, QStringLiteral("1234567"));
    EXPECT_EQ(edit->text(), QStringLiteral("1,234,567"));
    EXPECT_EQ(edit->cursorPosition(), 9);
    edit->setCursorPosition(3); // behind the 2 and the 3: "1,2|34"
    Keys::type(edit, QStringLiteral("9"));
    EXPECT_EQ(edit->text(), QStringLiteral("12,934,567"));
    EXPECT_EQ(edit->cursorPosition(), 4);
    EXPECT_EQ(edit->GetText(), QStringLiteral("12934567"));
    EXPECT_DOUBLE_EQ(edit->asFloat(), 12934567.0);
}

TEST_F(SmartEdit, BackspaceAndDeletePassOverASeparatorToTheDigit)
{
    Edit *edit = input(Edit::Money);
    edit->SetText(QStringLiteral("1234567"));
    edit->setCursorPosition(6); // "1,234,|567"
    Keys::press(&form, Qt::Key_Backspace);
    EXPECT_EQ(edit->text(), QStringLiteral("123,567"));
    edit->setCursorPosition(3); // "123|,567"
    Keys::press(&form, Qt::Key_Delete);
    EXPECT_EQ(edit->text(), QStringLiteral("12,367"));
}

TEST_F(SmartEdit, SeparatorsDoNotCountForTheLargestLength)
{
    Edit *edit = input(Edit::Money, 15);
    Keys::type(edit, QStringLiteral("1234567890123456"));
    EXPECT_EQ(edit->text(), QStringLiteral("123,456,789,012,345"));
}

TEST_F(SmartEdit, AMoneyInputKeepsDecimalsUngrouped)
{
    Edit *edit = input(Edit::Money);
    Keys::type(edit, QStringLiteral("1234.5678"));
    EXPECT_EQ(edit->text(), QStringLiteral("1,234.5678"));
}

TEST_F(SmartEdit, ALargerNumberThanTheRangeIsNotTaken)
{
    Edit *edit = input(Edit::Integer);
    edit->SetRange(1, 999999);
    Keys::type(edit, QStringLiteral("1000000"));
    EXPECT_EQ(edit->text(), QStringLiteral("100000"));
}

TEST_F(SmartEdit, ASmallerNumberIsRaisedWhenTheFocusLeavesAndAnEmptyInputStaysEmpty)
{
    Edit *edit = input(Edit::Integer);
    edit->SetRange(10, 99);
    Keys::type(edit, QStringLiteral("5"));
    EXPECT_EQ(edit->text(), QStringLiteral("5"));
    Keys::press(&form, Qt::Key_Tab);
    EXPECT_EQ(edit->text(), QStringLiteral("10"));
    edit->setFocus();
    Keys::retype(edit, {});
    Keys::press(&form, Qt::Key_Tab);
    EXPECT_TRUE(edit->IsEmpty());
}

TEST_F(SmartEdit, WhatTheProgramSetIsNotRaisedByPassingThrough)
{
    Edit *edit = input(Edit::Integer);
    edit->SetRange(1, 999999);
    edit->SetText(QStringLiteral("0"));
    Keys::press(&form, Qt::Key_Tab);
    EXPECT_EQ(edit->text(), QStringLiteral("0"));
}

TEST_F(SmartEdit, UpAndDownStepWithinTheRange)
{
    Edit *edit = input(Edit::Integer);
    edit->SetRange(1, 3);
    edit->SetSpin(true);
    Keys::press(&form, Qt::Key_Up);
    EXPECT_EQ(edit->text(), QStringLiteral("1"));
    for (int i = 0; i < 5; ++i)
        Keys::press(&form, Qt::Key_Up);
    EXPECT_EQ(edit->text(), QStringLiteral("3"));
    for (int i = 0; i < 5; ++i)
        Keys::press(&form, Qt::Key_Down);
    EXPECT_EQ(edit->text(), QStringLiteral("1"));
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
    Keys::type(edit, QStringLiteral("5"));
    Keys::press(&form, Qt::Key_Up);
    EXPECT_EQ(edit->text(), QStringLiteral("5"));
}

TEST_F(SmartEdit, ANumberOnItsWayIsCompletedWhenTheFocusLeaves)
{
    Edit *edit = input(Edit::Number);
    const QList<std::pair<QString, QString>> cases{
        {QStringLiteral("7."), QStringLiteral("7")},      {QStringLiteral(".5"), QStringLiteral("0.5")},
        {QStringLiteral("007"), QStringLiteral("7")},     {QStringLiteral("."), QString()},
        {QStringLiteral("0.50"), QStringLiteral("0.50")},
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
    Keys::type(edit, QStringLiteral("-5"));
    EXPECT_EQ(edit->text(), QStringLiteral("5"));
    edit->SetRange(-10, 10);
    Keys::retype(edit, QStringLiteral("-5"));
    EXPECT_EQ(edit->asInteger(), -5);
}

TEST_F(SmartEdit, ValuesGoInAndComeOutByKind)
{
    Edit *number = input(Edit::Number);
    number->SetValue(7.33);
    EXPECT_EQ(number->text(), QStringLiteral("7.33"));
    EXPECT_EQ(number->GetValue().typeId(), QMetaType::Double);
    number->SetValue(QVariant());
    EXPECT_TRUE(number->IsEmpty());
    EXPECT_TRUE(number->GetValue().isNull());
    Edit money(nullptr, Edit::Money, 15);
    money.SetValue(1234567.5);
    EXPECT_EQ(money.text(), QStringLiteral("1,234,567.5"));
    EXPECT_EQ(money.GetText(), QStringLiteral("1234567.5"));
    money.SetValue(123456789012345.0);
    EXPECT_EQ(money.text(), QStringLiteral("123,456,789,012,345"));
    Edit whole(nullptr, Edit::Integer, 15);
    whole.SetValue(42);
    EXPECT_EQ(whole.GetValue(), QVariant(42));
    Edit text(nullptr, Edit::Text, 50);
    text.SetValue(QStringLiteral("متن"));
    EXPECT_EQ(text.GetValue(), QVariant(QStringLiteral("متن")));
}

TEST_F(SmartEdit, AWholeNumberNeverExceedsWhatAnIntegerColumnHolds)
{
    Edit *edit = input(Edit::Integer, 15);
    Keys::type(edit, QStringLiteral("99999999999"));
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
        QStringLiteral("می\u200Cخواهم 'O''Brien'; -- \"x\" [%_] ۱٢3 ي ی ك ک \U0001F469\u200D\U0001F4BB <&>");
    Keys::type(edit, typed);
    EXPECT_EQ(edit->text(), typed);
    EXPECT_EQ(edit->GetText(), typed);
}

TEST_F(SmartEdit, LineBreaksAndTabsBecomeBlanksAndControlCharactersGo)
{
    Edit *edit = input(Edit::Text, 50);
    paste(edit, QStringLiteral("یک\r\nدو\nسه\tچهار\u2028پنج\u0007"));
    EXPECT_EQ(edit->text(), QStringLiteral("یک دو سه چهار پنج"));
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
    Keys::type(edit, QStringLiteral("abcdef"));
    edit->setCursorPosition(3);
    paste(edit, QStringLiteral("123456789"));
    EXPECT_EQ(edit->text(), QStringLiteral("abc1234def"));
    EXPECT_EQ(edit->cursorPosition(), 7);
}

TEST_F(SmartEdit, AFullTextTakesNoMoreKeysAndKeepsWhatStandsBehindTheCaret)
{
    Edit *edit = input(Edit::Text, 5);
    Keys::type(edit, QStringLiteral("abcde"));
    edit->setCursorPosition(2);
    Keys::type(edit, QStringLiteral("X"));
    EXPECT_EQ(edit->text(), QStringLiteral("abcde"));
    EXPECT_EQ(edit->cursorPosition(), 2);
    EXPECT_TRUE(messages.take().isEmpty());
}

TEST_F(SmartEdit, AnEmojiCountsAsOneCharacterAndIsNeverCutInTwo)
{
    Edit *edit = input(Edit::Text, 3);
    const QString emoji = QStringLiteral("\U0001F600");
    paste(edit, emoji.repeated(10));
    EXPECT_EQ(edit->text(), emoji.repeated(3));
    Keys::type(edit, emoji);
    EXPECT_EQ(edit->text(), emoji.repeated(3));
    const QString family = QStringLiteral("\U0001F469\u200D\U0001F469\u200D\U0001F467");
    edit->SetMaxLength(6);
    edit->Clear();
    paste(edit, family + family);
    EXPECT_EQ(edit->text(), family) << "a joined picture goes as a whole";
}

TEST_F(SmartEdit, AStoredTextThatIsLongerStaysWholeAndCanBeShortened)
{
    Edit *edit = input(Edit::Text, 5);
    edit->SetText(QStringLiteral("abcdefgh"));
    EXPECT_EQ(edit->text(), QStringLiteral("abcdefgh"));
    edit->setCursorPosition(8);
    Keys::type(edit, QStringLiteral("X"));
    EXPECT_EQ(edit->text(), QStringLiteral("abcdefgh"));
    Keys::press(&form, Qt::Key_Backspace);
    EXPECT_EQ(edit->text(), QStringLiteral("abcdefg"));
}

TEST_F(SmartEdit, EveryChangeIsToldOnceWhoeverMadeIt)
{
    Edit *edit = input(Edit::Money);
    const auto changes = countChanges(edit);
    Keys::type(edit, QStringLiteral("1234"));
    EXPECT_EQ(*changes, 4);
    edit->SetText(QStringLiteral("5"));
    EXPECT_EQ(*changes, 5);
    edit->SetText(QStringLiteral("5"));
    EXPECT_EQ(*changes, 5) << "nothing changed";
    Keys::type(edit, QStringLiteral("x"));
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
    Keys::press(&form, Qt::Key_unknown, Qt::AltModifier, QStringLiteral("ش"));
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
    edit->SetText(QStringLiteral("100.5"));
    GuardPercent(edit, false);
    EXPECT_EQ(edit->text(), QStringLiteral("10.5"));
    EXPECT_EQ(edit->cursorPosition(), 4) << "the old length minus 1";
    edit->SetText(QStringLiteral("150"));
    GuardPercent(edit, true);
    EXPECT_EQ(edit->cursorPosition(), 2);
}

TEST_F(SmartEdit, APastedShareIsGuardedAsWell)
{
    Edit *edit = input(Edit::Number);
    QObject::connect(edit, &Edit::changed, edit, [edit] { GuardPercent(edit, false); });
    paste(edit, QStringLiteral("9999"));
    EXPECT_EQ(edit->text(), QStringLiteral("99"));
}

TEST_F(SmartEdit, ALongTextShowsItsBeginningUntilItIsEdited)
{
    Edit *edit = input(Edit::Text, 200);
    const QString address = u"تهران، جاده مخصوص کرج، کیلومتر 14، خیابان صنعت، پلاک 25 "_qs.repeated(3);
    Keys::type(edit, address);
    EXPECT_EQ(edit->cursorPosition(), address.size()) << "the end is where one types";
    Keys::press(edit, Qt::Key_Tab);
    EXPECT_EQ(edit->cursorPosition(), 0);
    edit->SetText(address + address);
    EXPECT_EQ(edit->cursorPosition(), 0);
    edit->grab(); // painting scrolls
    EXPECT_LE(edit->cursorPositionAt({edit->width() - 8, edit->height() / 2}), 1) << "on the right";
}
