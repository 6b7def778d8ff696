#include "host/controls/Form.h"
#include "support/ScriptedMessages.h"

#include "host/Component_ZLM/PersianCalendarPopup.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"

using namespace Qt::Literals::StringLiterals;

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
         {u"14040105"_s, u"1404/1/5"_s, u"۱۴۰۴/۰۱/۰۵"_s, u"1404-01-05"_s, u"١٤٠٤.١.٥"_s}) {
        edit->setFocus();
        Keys::retype(edit, typed);
        EXPECT_EQ(edit->GetText(), u"1404/01/05"_s) << typed.toStdString();
        leave();
        EXPECT_EQ(edit->text(), u"1404/01/05"_s);
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
    Keys::type(edit, u"1404/12/30"_s);
    leave();
    EXPECT_EQ(edit->text(), u"1404/12/30"_s) << "1404 is no leap year";
    EXPECT_TRUE(messages.take().isEmpty()) << "leaving does not stop work";
    EXPECT_FALSE(edit->IsValid());
    EXPECT_EQ(messages.take().size(), 1);
    EXPECT_EQ(messages.last().number, 10);
    EXPECT_EQ(messages.last().control, edit);
    edit->setFocus();
    Keys::retype(edit, u"1403/12/30"_s);
    EXPECT_TRUE(edit->IsValid());
}

TEST_F(DateEdit, HalfADateIsKeptAndIsNotValid)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    Keys::type(edit, u"1404/"_s);
    leave();
    EXPECT_EQ(edit->GetText(), u"1404/"_s);
    EXPECT_FALSE(edit->IsValid());
}

TEST_F(DateEdit, LettersAndAThirdSlashAreNotTaken)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    Keys::type(edit, u"14x04/ش1/2/"_s);
    EXPECT_EQ(edit->text(), u"1404/1/2"_s);
    edit->Clear();
    Keys::type(edit, u"140401051"_s);
    EXPECT_EQ(edit->text(), u"14040105"_s);
}

TEST_F(DateEdit, CompletingADateOnLeavingTellsTheChangeOnce)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    Keys::type(edit, u"1404/1/5"_s);
    const auto changes = countChanges(edit);
    leave();
    EXPECT_EQ(*changes, 1);
}

TEST_F(DateEdit, TheCalendarOpensOnTheTypedDayAndEnterTakesADay)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    edit->SetText(u"1404/01/05"_s);
    Keys::press(&form, Qt::Key_Down, Qt::AltModifier);
    ASSERT_TRUE(calendar());
    EXPECT_EQ(calendar()->day(), (TPersianDate{1404, 1, 5}));
    Keys::picture(calendar(), u"calendar"_s);
    Keys::press(&form, Qt::Key_Left); // time runs to the left
    Keys::press(&form, Qt::Key_Down);
    EXPECT_EQ(calendar()->day(), (TPersianDate{1404, 1, 13}));
    Keys::press(&form, Qt::Key_Return);
    EXPECT_FALSE(calendar());
    EXPECT_EQ(edit->GetText(), u"1404/01/13"_s);
    EXPECT_TRUE(edit->hasFocus());
}

TEST_F(DateEdit, EscapeClosesTheCalendarAndKeepsTheDate)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    edit->SetText(u"1404/01/05"_s);
    int exits = 0;
    QObject::connect(edit, &TSmartEdit_ZLM::exited, edit, [&] { ++exits; });
    Keys::press(&form, Qt::Key_F2);
    ASSERT_TRUE(calendar());
    Keys::press(&form, Qt::Key_Up);
    Keys::press(&form, Qt::Key_Escape);
    EXPECT_FALSE(calendar());
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(edit->GetText(), u"1404/01/05"_s);
    EXPECT_EQ(exits, 0) << "a popup is no exit";
}

TEST_F(DateEdit, TheCalendarMovesByMonthAndYearAndStaysWithinTheMonthsDays)
{
    auto *edit = open(new TSmartDateEdit_ZLM);
    edit->SetText(u"1403/06/31"_s);
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
    edit->SetText(u"1404/01/05"_s);
    edit->PickButton()->click();
    ASSERT_TRUE(calendar());
    // 1 Farvardin 1404 is a Friday: the leftmost place of the first week.
    const QSize cell((calendar()->width() - 12) / 7, 0);
    QPoint place(6 + cell.width() / 2, 0);
    const int row = (calendar()->height() - 18) / 9;
    place.setY(12 + 2 * row + row / 2);
    QTest::mouseClick(calendar(), Qt::LeftButton, {}, place);
    EXPECT_FALSE(calendar());
    EXPECT_EQ(edit->GetText(), u"1404/01/01"_s);
}

using MaskEdit = FormEdits;

TEST_F(MaskEdit, ANationalCodeTakesTenDigitsAndChecksThem)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::NationalCode, 10));
    EXPECT_TRUE(edit->IsValid()) << "empty is valid";
    Keys::type(edit, u"۰0۱x2345678999"_s);
    EXPECT_EQ(edit->text(), u"0012345678"_s);
    EXPECT_FALSE(edit->IsValid());
    EXPECT_EQ(messages.take(), QStringList{u"ShowSmartMessage:10310()"_s});
    Keys::retype(edit, u"0013542419"_s);
    EXPECT_TRUE(edit->IsValid());
    EXPECT_TRUE(messages.take().isEmpty());
}

TEST_F(MaskEdit, APastedNationalCodeLosesItsDashes)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::NationalCode, 10));
    paste(edit, u" 001-354241-9\n"_s);
    EXPECT_EQ(edit->text(), u"0013542419"_s);
}

TEST_F(MaskEdit, APostCodeHasTenDigits)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::PostCode, 10));
    EXPECT_TRUE(edit->IsValid());
    Keys::type(edit, u"123456789"_s);
    EXPECT_FALSE(edit->IsValid());
    EXPECT_EQ(messages.take().size(), 1);
    Keys::type(edit, u"0"_s);
    EXPECT_TRUE(edit->IsValid());
}

TEST_F(MaskEdit, ATelephoneTakesItsSignsAndNoLetters)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::Telephone, 15));
    Keys::type(edit, u"(۰۲۱)88-77x"_s);
    EXPECT_EQ(edit->text(), u"(021)88-77"_s);
    EXPECT_TRUE(edit->IsValid());
    EXPECT_EQ(edit->layoutDirection(), Qt::LeftToRight);
}

TEST_F(MaskEdit, AnIdNumberHasDigitsOnly)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::IdNumber, 10));
    Keys::type(edit, u"۱2a٣"_s);
    EXPECT_EQ(edit->text(), u"123"_s);
}

TEST_F(MaskEdit, AnEMailHasNameAndDomain)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::Email, 50));
    EXPECT_TRUE(edit->IsValid());
    for (const QString &wrong : {u"ali"_s, u"ali@"_s, u"@a.ir"_s, u"a@b@c.ir"_s, u"a@b."_s, u"a@.ir"_s}) {
        Keys::retype(edit, wrong);
        EXPECT_FALSE(edit->IsValid()) << wrong.toStdString();
    }
    EXPECT_EQ(messages.take().size(), 6);
    Keys::retype(edit, u"ali.1@mail.example.ir"_s);
    EXPECT_TRUE(edit->IsValid());
}

TEST_F(MaskEdit, APastedEMailLosesTheBlanksAroundIt)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::Email, 50));
    paste(edit, u" ali@example.ir\n"_s);
    EXPECT_EQ(edit->text(), u"ali@example.ir"_s);
}

TEST_F(MaskEdit, AStoredTextOfAnotherFormIsShownAndCanBeTakenAway)
{
    auto *edit = open(new TSmartMaskEdit_ZLM(nullptr, TSmartMaskEdit_ZLM::Telephone, 5));
    edit->SetText(u"12 داخلی 3"_s);
    EXPECT_EQ(edit->GetText(), u"12 داخلی 3"_s);
    edit->setCursorPosition(int(edit->text().size()));
    Keys::press(&form, Qt::Key_Backspace);
    EXPECT_EQ(edit->text(), u"12 داخلی "_s);
    Keys::type(edit, u"4"_s);
    EXPECT_EQ(edit->text(), u"12 داخلی "_s) << "nothing is added to it";
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
        {u"0830"_s, u"08:30"_s}, {u"830"_s, u"08:30"_s},  {u"8"_s, u"08:00"_s},    {u"۱۶:۴۵"_s, u"16:45"_s},
        {u"8:5"_s, u"08:05"_s},  {u"8.30"_s, u"08:30"_s}, {u"2359"_s, u"23:59"_s}, {u"0"_s, u"00:00"_s}};
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
    for (const QString &typed : {u"24:00"_s, u"12:60"_s, u"2500"_s}) {
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
    edit->SetText(u"08:00"_s);
    EXPECT_EQ(edit->GetText(), u"08:00"_s);
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
    code->SetText(u" ۱۲ "_s);
    code->setFocus();
    digits->setFocus();
    EXPECT_EQ(code->GetText(), u" ۱۲ "_s);
    Keys::retype(code, u" ک۱٢\u200C "_s);
    EXPECT_EQ(code->GetText(), u" ک۱٢\u200C "_s) << "while the user is at it";
    Keys::retype(digits, u" ۱ "_s);
    EXPECT_EQ(code->GetText(), u"ک12"_s);
    EXPECT_TRUE(code->WasTyped());
    digits->FinishTyping();
    EXPECT_EQ(digits->GetText(), " 1 ");
}
