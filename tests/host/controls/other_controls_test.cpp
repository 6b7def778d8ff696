#include "host/controls/Form.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"

#include <QFormLayout>
#include <QMenu>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Controls : testing::Test {
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
};

} // namespace

TEST_F(Controls, ThePickButtonIsReachedByF2AndAltDownAndTheMouse)
{
    auto *edit = open(new TSmartButtonEdit_ZLM(nullptr, 6));
    int picks = 0;
    int exits = 0;
    QObject::connect(edit, &TSmartButtonEdit_ZLM::pick, edit, [&] { ++picks; });
    QObject::connect(edit, &TSmartEdit_ZLM::exited, edit, [&] { ++exits; });
    Keys::press(&form, Qt::Key_F2);
    Keys::press(&form, Qt::Key_Down, Qt::AltModifier);
    QTest::mouseClick(edit->PickButton(), Qt::LeftButton);
    EXPECT_EQ(picks, 3);
    EXPECT_EQ(exits, 0) << "the button is a part of the input";
    Keys::type(edit, u"۱۲"_s);
    EXPECT_EQ(edit->GetValue(), QVariant(12));
    edit->setReadOnly(true);
    Keys::press(&form, Qt::Key_F2);
    QTest::mouseClick(edit->PickButton(), Qt::LeftButton);
    EXPECT_EQ(picks, 3);
}

TEST_F(Controls, ADisabledCodeInputHasADisabledButton)
{
    auto *edit = open(new TSmartButtonEdit_ZLM(nullptr, 6));
    edit->setEnabled(false);
    EXPECT_FALSE(edit->PickButton()->isEnabled());
}

TEST_F(Controls, ASpinInputTakesPersianDigitsAndItsRangeOnly)
{
    auto *spin = open(new TSmartSpinEdit_ZLM(nullptr, 0, 6));
    const auto changes = countChanges(spin);
    Keys::retype(spin, u"۵"_s);
    EXPECT_EQ(spin->value(), 5);
    EXPECT_EQ(spin->text(), u"5"_s);
    EXPECT_EQ(*changes, 1);
    Keys::press(&form, Qt::Key_Up);
    Keys::press(&form, Qt::Key_Up);
    EXPECT_EQ(spin->GetText(), u"6"_s);
    Keys::retype(spin, u"9"_s);
    EXPECT_LE(spin->value(), 6);
    spin->SetValue(0);
    EXPECT_EQ(spin->GetText(), u"0"_s);
}

TEST_F(Controls, ASpinInputStaysLatinInAPersianLocale)
{
    QLocale::setDefault(QLocale(QLocale::Persian, QLocale::Iran));
    TSmartSpinEdit_ZLM spin(nullptr, 0, 2000000);
    spin.SetValue(1234567);
    EXPECT_EQ(spin.text(), u"1234567"_s);
    QLocale::setDefault(QLocale::c());
}

TEST_F(Controls, ACheckBoxTurnsBySpaceAndTellsIt)
{
    auto *check = open(new TSmartCheckBox_ZLM(u"م&شمول  مالیات"_s));
    const auto changes = countChanges(check);
    Keys::press(&form, Qt::Key_Space, {}, u" "_s);
    EXPECT_TRUE(check->GetValue().toBool());
    EXPECT_EQ(*changes, 1);
    check->SetValue(false);
    EXPECT_EQ(check->GetText(), u"0"_s);
    EXPECT_EQ(*changes, 2);
    EXPECT_EQ(check->text(), u"م&شمول  مالیات"_s) << "two blanks, as given";
}

TEST_F(Controls, AComboBoxIsSearchedByTypingWhicheverYehAndKaf)
{
    auto *combo = open(
        new TSmartComboBox_ZLM(nullptr, {u"سایر"_s, u"کارت معافيت"_s, u"یکم"_s, u"كارگري"_s, u"ليسانس"_s}));
    Keys::type(combo, u"ي"_s); // the Arabic yeh finds the Persian one
    EXPECT_EQ(combo->currentIndex(), 2);
    QTest::qWait(QApplication::keyboardInputInterval() + 50);
    Keys::type(combo, u"کارگ"_s); // and the Persian kaf the Arabic one
    EXPECT_EQ(combo->currentIndex(), 3);
    QTest::qWait(QApplication::keyboardInputInterval() + 50);
    Keys::type(combo, u"لی"_s);
    EXPECT_EQ(combo->currentIndex(), 4);
}

TEST_F(Controls, TheSameLetterAgainWalksThroughTheItemsThatBeginWithIt)
{
    auto *combo = open(new TSmartComboBox_ZLM(nullptr, {u"رسمی"_s, u"پیمانی"_s, u"روزمزد"_s, u"رسته"_s}));
    Keys::type(combo, u"ر"_s);
    EXPECT_EQ(combo->currentIndex(), 2);
    Keys::type(combo, u"ر"_s);
    EXPECT_EQ(combo->currentIndex(), 3);
    Keys::type(combo, u"ر"_s);
    EXPECT_EQ(combo->currentIndex(), 0);
}

TEST_F(Controls, AnOpenListIsSearchedInTheSameWay)
{
    auto *combo = open(new TSmartComboBox_ZLM(nullptr, {u"سایر"_s, u"رسمي"_s, u"كارگري"_s}));
    combo->showPopup();
    ASSERT_TRUE(QApplication::activePopupWidget());
    Keys::press(&form, Qt::Key_unknown, {}, u"ک"_s);
    Keys::press(&form, Qt::Key_Return);
    EXPECT_EQ(combo->currentIndex(), 2);
}

TEST_F(Controls, AComboBoxTellsEveryChangeAndLeavesTheFunctionKeysToTheScreen)
{
    auto *combo = open(new TSmartComboBox_ZLM(nullptr, {u"روزانه"_s, u"ماهانه"_s}));
    const auto changes = countChanges(combo);
    Keys::press(&form, Qt::Key_Down);
    EXPECT_EQ(combo->GetValue(), QVariant(1));
    EXPECT_EQ(*changes, 1);
    Keys::press(&form, Qt::Key_F4);
    EXPECT_FALSE(QApplication::activePopupWidget());
    combo->SetValue(0);
    EXPECT_EQ(*changes, 2);
}

TEST_F(Controls, ComboItemsCarryCodes)
{
    TSmartComboBox_ZLM combo;
    EXPECT_EQ(combo.Code(), 0);
    EXPECT_TRUE(combo.IsEmpty());
    combo.AddItem(u"همه"_s, 0);
    combo.AddItem(u"اداری"_s, 7);
    EXPECT_TRUE(combo.SetCode(7));
    EXPECT_EQ(combo.currentIndex(), 1);
    EXPECT_EQ(combo.Code(), 7);
    EXPECT_FALSE(combo.SetCode(9));
    EXPECT_EQ(combo.currentIndex(), 1) << "a code that is not there changes nothing";
    EXPECT_TRUE(combo.SetCode(0));
    TSmartComboBox_ZLM plain(nullptr, {u"الف"_s});
    EXPECT_FALSE(plain.SetCode(0)) << "an item without a code is not the item of code 0";
}

TEST_F(Controls, AButtonIsPressedByEnterAndSpaceAndAClickLeavesTheFocusAlone)
{
    auto *edit = open(new TSmartEdit_ZLM);
    auto *button = form.add(new TSmartButton_ZLM(u"جدید F4"_s, nullptr, u"جدید"_s));
    int clicks = 0;
    QObject::connect(button, &QToolButton::clicked, button, [&] { ++clicks; });
    EXPECT_EQ(button->text(), u"جدید F4"_s);
    EXPECT_EQ(button->ShortCaption(), u"جدید"_s);
    QApplication::processEvents();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(edit->hasFocus());
    button->setFocus(Qt::TabFocusReason);
    Keys::press(&form, Qt::Key_Return);
    Keys::press(&form, Qt::Key_Space, {}, u" "_s);
    EXPECT_EQ(clicks, 3);
}

TEST_F(Controls, ASaveButtonsMenuOffersTheWaysOfSaving)
{
    auto *button = open(new TSmartButton_ZLM(u"ذخيره F3"_s));
    button->SetSaveMode(svSaveClose);
    EXPECT_EQ(button->SaveMode(), svSaveClose);
    QList<TSaveMode> asked;
    int clicks = 0;
    QObject::connect(button, &TSmartButton_ZLM::saveRequested, button, [&](TSaveMode way) { asked << way; });
    QObject::connect(button, &QToolButton::clicked, button, [&] { ++clicks; });
    ASSERT_TRUE(button->menu());
    for (QAction *action : button->menu()->actions())
        action->trigger();
    EXPECT_EQ(asked, (QList<TSaveMode>{svSave, svSaveClose, svSaveNew}));
    EXPECT_EQ(clicks, 0);
    button->click();
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(asked.size(), 3) << "the button itself only clicks";
    button->SetSaveMode(svNone);
    EXPECT_FALSE(button->menu());
}

namespace {

struct AccessKey : testing::Test {
    Form form;
    QLineEdit *first = form.add(new QLineEdit);
    TSmartEdit_ZLM *input = form.add(new TSmartEdit_ZLM);

    void caption(const QString &text)
    {
        auto *label = form.add(new QLabel(text));
        label->setBuddy(input);
        form.open();
        first->setFocus();
    }
    bool reaches(const QString &letter, Qt::Key key = Qt::Key_unknown)
    {
        first->setFocus();
        Keys::press(&form, key, Qt::AltModifier, letter);
        return input->hasFocus();
    }
};

} // namespace

TEST_F(AccessKey, AltWithAPersianLetterReachesTheInput)
{
    caption(u"  &عنوان :"_s);
    EXPECT_TRUE(reaches(u"ع"_s));
    EXPECT_TRUE(reaches(u"ع"_s, Qt::Key(u'ع'))) << "as a keyboard with a Persian layout sends it";
    EXPECT_FALSE(reaches(u"ش"_s));
}

TEST_F(AccessKey, BothFormsOfKafReachTheInput)
{
    caption(u"  &کد :"_s);
    EXPECT_TRUE(reaches(u"ک"_s));
    EXPECT_TRUE(reaches(u"ك"_s));
    EXPECT_TRUE(reaches(u"ك"_s, Qt::Key(0x0643)));
}

TEST_F(AccessKey, BothFormsOfYehReachTheInputWhicheverTheCaptionHas)
{
    caption(u"  نام خانوادگ&ي :"_s);
    EXPECT_TRUE(reaches(u"ي"_s));
    EXPECT_TRUE(reaches(u"ی"_s));
}

TEST_F(AccessKey, ADisabledInputIsNotReached)
{
    caption(u"  &کد :"_s);
    input->setEnabled(false);
    EXPECT_FALSE(reaches(u"ك"_s));
}

TEST_F(AccessKey, ACheckBoxTurns)
{
    auto *check = form.add(new TSmartCheckBox_ZLM(u"مال&یات"_s));
    caption(u"  &عنوان :"_s);
    Keys::press(&form, Qt::Key_unknown, Qt::AltModifier, u"ی"_s);
    EXPECT_TRUE(check->isChecked());
    Keys::press(&form, Qt::Key_unknown, Qt::AltModifier, u"ي"_s);
    EXPECT_FALSE(check->isChecked());
}
