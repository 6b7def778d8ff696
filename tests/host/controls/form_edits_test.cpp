#include "host/controls/Form.h"
#include "support/ScriptedMessages.h"

#include "host/Component_ZLM/PersianCalendarPopup.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"

namespace {

struct FormEdits : testing::Test {
    ScriptedMessages messages;
    Form form;

    template <class Input>
    Input *open(Input *input)
    {
        form.add(input);
        form.add(new QLineEdit);
        form.open();
        input->setFocus();
        return input;
    }
    void leave() { Keys::press(&form, Qt::Key_Tab); }

    TPersianCalendarPopup *calendar()
    {
        return qobject_cast<TPersianCalendarPopup *>(QApplication::activePopupWidget());
    }
};

} // namespace

using DateEdit = FormEdits;

TEST_F(DateEdit, ADateIsTypedWithOrWithoutSlashesInAnyScript)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    for (const QString &typed :
         {QStringLiteral("14040105"), QStringLiteral("1404/1/5"), QStringLiteral("۱۴۰۴/۰۱/۰۵"),
          QStringLiteral("1404-01-05"), QStringLiteral("١٤٠٤.١.٥")}) {
        edit->setFocus();
        Keys::retype(edit, typed);
        EXPECT_EQ(edit->GetText(), QStringLiteral("1404/01/05")) << typed.toStdString();
        leave();
        EXPECT_EQ(edit->text(), QStringLiteral("1404/01/05"));
        EXPECT_TRUE(edit->IsValid());
    }
    EXPECT_TRUE(messages.take().isEmpty());
}

TEST_F(DateEdit, NoDateIsValidAndHasNoValue)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    EXPECT_TRUE(edit->IsValid());
    EXPECT_TRUE(edit->IsEmpty());
    EXPECT_TRUE(edit->GetValue().isNull());
    EXPECT_TRUE(messages.take().isEmpty());
}

TEST_F(DateEdit, ADateThatDoesNotExistStaysAsTypedAndIsNotValid)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    Keys::type(edit, QStringLiteral("1404/12/30"));
    leave();
    EXPECT_EQ(edit->text(), QStringLiteral("1404/12/30")) << "1404 is no leap year";
    EXPECT_TRUE(messages.take().isEmpty()) << "leaving does not stop work";
    EXPECT_FALSE(edit->IsValid());
    EXPECT_EQ(messages.take().size(), 1);
    EXPECT_EQ(messages.last().number, 10);
    EXPECT_EQ(messages.last().control, edit);
    edit->setFocus();
    Keys::retype(edit, QStringLiteral("1403/12/30"));
    EXPECT_TRUE(edit->IsValid());
}

TEST_F(DateEdit, HalfADateIsKeptAndIsNotValid)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    Keys::type(edit, QStringLiteral("1404/"));
    leave();
    EXPECT_EQ(edit->GetText(), QStringLiteral("1404/"));
    EXPECT_FALSE(edit->IsValid());
}

TEST_F(DateEdit, LettersAndAThirdSlashAreNotTaken)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    Keys::type(edit, QStringLiteral("14x04/ش1/2/"));
    EXPECT_EQ(edit->text(), QStringLiteral("1404/1/2"));
    edit->Clear();
    Keys::type(edit, QStringLiteral("140401051"));
    EXPECT_EQ(edit->text(), QStringLiteral("14040105"));
}

TEST_F(DateEdit, CompletingADateOnLeavingTellsTheChangeOnce)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    Keys::type(edit, QStringLiteral("1404/1/5"));
    const auto changes = countChanges(edit);
    leave();
    EXPECT_EQ(*changes, 1);
}

TEST_F(DateEdit, TheCalendarOpensOnTheTypedDayAndEnterTakesADay)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    edit->SetText(QStringLiteral("1404/01/05"));
    Keys::press(&form, Qt::Key_Down, Qt::AltModifier);
    ASSERT_TRUE(calendar());
    EXPECT_EQ(calendar()->day(), (TPersianDate{1404, 1, 5}));
    Keys::picture(calendar(), QStringLiteral("calendar"));
    Keys::press(&form, Qt::Key_Left); // time runs to the left
    Keys::press(&form, Qt::Key_Down);
    EXPECT_EQ(calendar()->day(), (TPersianDate{1404, 1, 13}));
    Keys::press(&form, Qt::Key_Return);
    EXPECT_FALSE(calendar());
    EXPECT_EQ(edit->GetText(), QStringLiteral("1404/01/13"));
    EXPECT_TRUE(edit->hasFocus());
}

TEST_F(DateEdit, EscapeClosesTheCalendarAndKeepsTheDate)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    edit->SetText(QStringLiteral("1404/01/05"));
    int exits = 0;
    QObject::connect(edit, &TSmartEdit_ZLM::exited, edit, [&] { ++exits; });
    Keys::press(&form, Qt::Key_F2);
    ASSERT_TRUE(calendar());
    Keys::press(&form, Qt::Key_Up);
    Keys::press(&form, Qt::Key_Escape);
    EXPECT_FALSE(calendar());
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(edit->GetText(), QStringLiteral("1404/01/05"));
    EXPECT_EQ(exits, 0) << "a popup is no exit";
}

TEST_F(DateEdit, TheCalendarMovesByMonthAndYearAndStaysWithinTheMonthsDays)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    edit->SetText(QStringLiteral("1403/06/31"));
    Keys::press(&form, Qt::Key_F2);
    ASSERT_TRUE(calendar());
    Keys::press(&form, Qt::Key_PageDown);
    EXPECT_EQ(calendar()->day(), (TPersianDate{1403, 7, 30}));
    Keys::press(&form, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(calendar()->day(), (TPersianDate{1402, 7, 30}));
    Keys::press(&form, Qt::Key_Home);
    EXPECT_EQ(calendar()->day(), (TPersianDate{1402, 7, 1}));
    Keys::press(&form, Qt::Key_Right);
    EXPECT_EQ(calendar()->day(), (TPersianDate{1402, 6, 31}));
    Keys::press(&form, Qt::Key_End);
    EXPECT_EQ(calendar()->day(), (TPersianDate{1402, 6, 31}));
    Keys::press(&form, Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(calendar()->day(), TPersianDate::today());
    Keys::press(&form, Qt::Key_Escape);
}

TEST_F(DateEdit, TheCalendarEndsWithTheYearsItKnows)
{
    TPersianCalendarPopup popup(nullptr, {1500, 12, 20});
    popup.resize(popup.sizeHint());
    popup.show();
    Keys::press(&popup, Qt::Key_PageDown);
    EXPECT_EQ(popup.day(), (TPersianDate{1500, 12, 20}));
}

TEST_F(DateEdit, AClickTakesTheDayUnderTheMouse)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    edit->SetText(QStringLiteral("1404/01/05"));
    edit->PickButton()->click();
    ASSERT_TRUE(calendar());
    // 1 Farvardin 1404 is a Friday: the leftmost place of the first week.
    const QSize cell((calendar()->width() - 12) / 7, 0);
    QPoint place(6 + cell.width() / 2, 0);
    const int row = (calendar()->height() - 18) / 9;
    place.setY(12 + 2 * row + row / 2);
    QTest::mouseClick(calendar(), Qt::LeftButton, {}, place);
    EXPECT_FALSE(calendar());
    EXPECT_EQ(edit->GetText(), QStringLiteral("1404/01/01"));
}

using MaskEdit = FormEdits;

TEST_F(MaskEdit, ANationalCodeTakesTenDigitsAndChecksThem)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::NationalCode, 10));
    EXPECT_TRUE(edit->IsValid()) << "empty is valid";
    Keys::type(edit, QStringLiteral("۰0۱x2345678999"));
    EXPECT_EQ(edit->text(), QStringLiteral("0012345678"));
    EXPECT_FALSE(edit->IsValid());
    EXPECT_EQ(messages.take(), QStringList{QStringLiteral("ShowSmartMessage:10310()")});
    Keys::retype(edit, QStringLiteral("0013542419"));
    EXPECT_TRUE(edit->IsValid());
    EXPECT_TRUE(messages.take().isEmpty());
}

TEST_F(MaskEdit, APastedNationalCodeLosesItsDashes)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::NationalCode, 10));
    paste(edit, QStringLiteral(" 001-354241-9\n"));
    EXPECT_EQ(edit->text(), QStringLiteral("0013542419"));
}

TEST_F(MaskEdit, APostCodeHasTenDigits)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::PostCode, 10));
    EXPECT_TRUE(edit->IsValid());
    Keys::type(edit, QStringLiteral("123456789"));
    EXPECT_FALSE(edit->IsValid());
    EXPECT_EQ(messages.take().size(), 1);
    Keys::type(edit, QStringLiteral("0"));
    EXPECT_TRUE(edit->IsValid());
}

TEST_F(MaskEdit, ATelephoneTakesItsSignsAndNoLetters)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::Telephone, 15));
    Keys::type(edit, QStringLiteral("(۰۲۱)88-77x"));
    EXPECT_EQ(edit->text(), QStringLiteral("(021)88-77"));
    EXPECT_TRUE(edit->IsValid());
    EXPECT_EQ(edit->layoutDirection(), Qt::LeftToRight);
}

TEST_F(MaskEdit, AnIdNumberHasDigitsOnly)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::IdNumber, 10));
    Keys::type(edit, QStringLiteral("۱2a٣"));
    EXPECT_EQ(edit->text(), QStringLiteral("123"));
}

TEST_F(MaskEdit, AnEMailHasNameAndDomain)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::Email, 50));
    EXPECT_TRUE(edit->IsValid());
    for (const QString &wrong :
         {QStringLiteral("ali"), QStringLiteral("ali@"), QStringLiteral("@a.ir"), QStringLiteral("a@b@c.ir"),
          QStringLiteral("a@b."), QStringLiteral("a@.ir")}) {
        Keys::retype(edit, wrong);
        EXPECT_FALSE(edit->IsValid()) << wrong.toStdString();
    }
    EXPECT_EQ(messages.take().size(), 6);
    Keys::retype(edit, QStringLiteral("ali.1@mail.example.ir"));
    EXPECT_TRUE(edit->IsValid());
}

TEST_F(MaskEdit, APastedEMailLosesTheBlanksAroundIt)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::Email, 50));
    paste(edit, QStringLiteral(" ali@example.ir\n"));
    EXPECT_EQ(edit->text(), QStringLiteral("ali@example.ir"));
}

TEST_F(MaskEdit, AStoredTextOfAnotherFormIsShownAndCanBeTakenAway)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::Telephone, 5));
    edit->SetText(QStringLiteral("12 داخلی 3"));
    EXPECT_EQ(edit->GetText(), QStringLiteral("12 داخلی 3"));
    edit->setCursorPosition(int(edit->text().size()));
    Keys::press(&form, Qt::Key_Backspace);
    EXPECT_EQ(edit->text(), QStringLiteral("12 داخلی "));
    Keys::type(edit, QStringLiteral("4"));
    EXPECT_EQ(edit->text(), QStringLiteral("12 داخلی ")) << "nothing is added to it";
}

TEST_F(MaskEdit, TenThousandPastedCharactersDoNoHarm)
{
    auto *code = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::NationalCode, 10));
    paste(code, QString(10000, u'1'));
    EXPECT_TRUE(code->IsEmpty());
    EXPECT_EQ(messages.take().size(), 1);
}

using TimeEdit = FormEdits;

TEST_F(TimeEdit, ATimeIsTypedWithOrWithoutTheColon)
{
    auto *edit = open(new TSmartTime_ZLM);
    const QList<std::pair<QString, QString>> cases{
        {QStringLiteral("0830"), QStringLiteral("08:30")}, {QStringLiteral("830"), QStringLiteral("08:30")},
        {QStringLiteral("8"), QStringLiteral("08:00")},    {QStringLiteral("۱۶:۴۵"), QStringLiteral("16:45")},
        {QStringLiteral("8:5"), QStringLiteral("08:05")},  {QStringLiteral("8.30"), QStringLiteral("08:30")},
        {QStringLiteral("2359"), QStringLiteral("23:59")}, {QStringLiteral("0"), QStringLiteral("00:00")}};
    for (const auto &[typed, time] : cases) {
        edit->setFocus();
        Keys::retype(edit, typed);
        leave();
        EXPECT_EQ(edit->text(), time) << typed.toStdString();
        EXPECT_TRUE(edit->IsValid());
    }
}

TEST_F(TimeEdit, ATimeThatDoesNotExistStaysAsTypedAndIsNotValid)
{
    auto *edit = open(new TSmartTime_ZLM);
    for (const QString &typed : {QStringLiteral("24:00"), QStringLiteral("12:60"), QStringLiteral("2500")}) {
        edit->setFocus();
        Keys::retype(edit, typed);
        leave();
        EXPECT_EQ(edit->text(), typed);
        EXPECT_FALSE(edit->IsValid());
    }
    EXPECT_EQ(messages.take().size(), 3);
}

TEST_F(TimeEdit, NoTimeIsValid)
{
    auto *edit = open(new TSmartTime_ZLM);
    EXPECT_TRUE(edit->IsValid());
    edit->SetText(QStringLiteral("08:00"));
    EXPECT_EQ(edit->GetText(), QStringLiteral("08:00"));
    Keys::retype(edit, {});
    leave();
    EXPECT_TRUE(edit->IsEmpty());
}

TEST(CodeForm, TypedCodesTurnIntoLatinDigitsWhenTheyAreLeftAndStoredOnesStay)
{
    Form form;
    auto *code = form.add(new TSmartEdit_ZLM);
    auto *digits = form.add(new TSmartEdit_ZLM);
    code->SetCodeForm(TSmartEdit_ZLM::PlainCode);
    digits->SetCodeForm(TSmartEdit_ZLM::LatinDigits);
    form.open();
    code->SetText(QStringLiteral(" ۱۲ "));
    code->setFocus();
    digits->setFocus();
    EXPECT_EQ(code->GetText(), QStringLiteral(" ۱۲ "));
    Keys::retype(code, QStringLiteral(" ک۱٢\u200C "));
    EXPECT_EQ(code->GetText(), QStringLiteral(" ک۱٢\u200C ")) << "while the user is at it";
    Keys::retype(digits, QStringLiteral(" ۱ "));
    EXPECT_EQ(code->GetText(), QStringLiteral("ک12"));
    EXPECT_TRUE(code->WasTyped());
    digits->FinishTyping();
    EXPECT_EQ(digits->GetText(), " 1 ");
}
