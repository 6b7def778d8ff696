#include "host/controls/Form.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"

#include <QFormLayout>
#include <QMenu>

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
    Keys::type(edit, QStringLiteral("۱۲"));
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
    Keys::retype(spin, QStringLiteral("۵"));
    EXPECT_EQ(spin->value(), 5);
    EXPECT_EQ(spin->text(), QStringLiteral("5"));
    EXPECT_EQ(*changes, 1);
    Keys::press(&form, Qt::Key_Up);
    Keys::press(&form, Qt::Key_Up);
    EXPECT_EQ(spin->GetText(), QStringLiteral("6"));
    Keys::retype(spin, QStringLiteral("9"));
    EXPECT_LE(spin->value(), 6);
    spin->SetValue(0);
    EXPECT_EQ(spin->GetText(), QStringLiteral("0"));
}

TEST_F(Controls, ASpinInputStaysLatinInAPersianLocale)
{
    QLocale::setDefault(QLocale(QLocale::Persian, QLocale::Iran));
    TSmartSpinEdit_ZLM spin(nullptr, 0, 2000000);
    spin.SetValue(1234567);
    EXPECT_EQ(spin.text(), QStringLiteral("1234567"));
    QLocale::setDefault(QLocale::c());
}

TEST_F(Controls, ACheckBoxTurnsBySpaceAndTellsIt)
{
    auto *check = open(new TSmartCheckBox_ZLM(QStringLiteral("م&شمول  مالیات")));
    const auto changes = countChanges(check);
    Keys::press(&form, Qt::Key_Space, {}, QStringLiteral(" "));
    EXPECT_TRUE(check->GetValue().toBool());
    EXPECT_EQ(*changes, 1);
    check->SetValue(false);
    EXPECT_EQ(check->GetText(), QStringLiteral("0"));
    EXPECT_EQ(*changes, 2);
    EXPECT_EQ(check->text(), QStringLiteral("م&شمول  مالیات")) << "two blanks, as given";
}

TEST_F(Controls, AComboBoxIsSearchedByTypingWhicheverYehAndKaf)
{
    auto *combo = open(new TSmartComboBox_ZLM(nullptr, {QStringLiteral("سایر"), QStringLiteral("کارت معافيت"),
                                                        QStringLiteral("یکم"), QStringLiteral("كارگري"),
                                                        QStringLiteral("ليسانس")}));
    Keys::type(combo, QStringLiteral("ي")); // the Arabic yeh finds the Persian one
    EXPECT_EQ(combo->currentIndex(), 2);
    QTest::qWait(QApplication::keyboardInputInterval() + 50);
    Keys::type(combo, QStringLiteral("کارگ")); // and the Persian kaf the Arabic one
    EXPECT_EQ(combo->currentIndex(), 3);
    QTest::qWait(QApplication::keyboardInputInterval() + 50);
    Keys::type(combo, QStringLiteral("لی"));
    EXPECT_EQ(combo->currentIndex(), 4);
}

TEST_F(Controls, TheSameLetterAgainWalksThroughTheItemsThatBeginWithIt)
{
    auto *combo = open(new TSmartComboBox_ZLM(nullptr, {QStringLiteral("رسمی"), QStringLiteral("پیمانی"),
                                                        QStringLiteral("روزمزد"), QStringLiteral("رسته")}));
    Keys::type(combo, QStringLiteral("ر"));
    EXPECT_EQ(combo->currentIndex(), 2);
    Keys::type(combo, QStringLiteral("ر"));
    EXPECT_EQ(combo->currentIndex(), 3);
    Keys::type(combo, QStringLiteral("ر"));
    EXPECT_EQ(combo->currentIndex(), 0);
}

TEST_F(Controls, AnOpenListIsSearchedInTheSameWay)
{
    auto *combo = open(new TSmartComboBox_ZLM(
        nullptr, {QStringLiteral("سایر"), QStringLiteral("رسمي"), QStringLiteral("كارگري")}));
    combo->showPopup();
    ASSERT_TRUE(QApplication::activePopupWidget());
    Keys::press(&form, Qt::Key_unknown, {}, QStringLiteral("ک"));
    Keys::press(&form, Qt::Key_Return);
    EXPECT_EQ(combo->currentIndex(), 2);
}

TEST_F(Controls, AComboBoxTellsEveryChangeAndLeavesTheFunctionKeysToTheScreen)
{
    auto *combo = open(new TSmartComboBox_ZLM(nullptr, {QStringLiteral("روزانه"), QStringLiteral("ماهانه")}));
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
    combo.AddItem(QStringLiteral("همه"), 0);
    combo.AddItem(QStringLiteral("اداری"), 7);
    EXPECT_TRUE(combo.SetCode(7));
    EXPECT_EQ(combo.currentIndex(), 1);
    EXPECT_EQ(combo.Code(), 7);
    EXPECT_FALSE(combo.SetCode(9));
    EXPECT_EQ(combo.currentIndex(), 1) << "a code that is not there changes nothing";
    EXPECT_TRUE(combo.SetCode(0));
    TSmartComboBox_ZLM plain(nullptr, {QStringLiteral("الف")});
    EXPECT_FALSE(plain.SetCode(0)) << "an item without a code is not the item of code 0";
}

TEST_F(Controls, AButtonIsPressedByEnterAndSpaceAndAClickLeavesTheFocusAlone)
{
    auto *edit = open(new TSmartEdit_ZLM);
    auto *button = form.add(new TSmartButton_ZLM(QStringLiteral("جدید F4"), nullptr, QStringLiteral("جدید")));
    int clicks = 0;
    QObject::connect(button, &QToolButton::clicked, button, [&] { ++clicks; });
    EXPECT_EQ(button->text(), QStringLiteral("جدید F4"));
    EXPECT_EQ(button->ShortCaption(), QStringLiteral("جدید"));
    QApplication::processEvents();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(edit->hasFocus());
    button->setFocus(Qt::TabFocusReason);
    Keys::press(&form, Qt::Key_Return);
    Keys::press(&form, Qt::Key_Space, {}, QStringLiteral(" "));
    EXPECT_EQ(clicks, 3);
}

TEST_F(Controls, ASaveButtonsMenuOffersTheWaysOfSaving)
{
    auto *button = open(new TSmartButton_ZLM(QStringLiteral("ذخيره F3")));
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
    caption(QStringLiteral("  &عنوان :"));
    EXPECT_TRUE(reaches(QStringLiteral("ع")));
    EXPECT_TRUE(reaches(QStringLiteral("ع"), Qt::Key(u'ع')))
        << "as a keyboard with a Persian layout sends it";
    EXPECT_FALSE(reaches(QStringLiteral("ش")));
}

TEST_F(AccessKey, BothFormsOfKafReachTheInput)
{
    caption(QStringLiteral("  &کد :"));
    EXPECT_TRUE(reaches(QStringLiteral("ک")));
    EXPECT_TRUE(reaches(QStringLiteral("ك")));
    EXPECT_TRUE(reaches(QStringLiteral("ك"), Qt::Key(0x0643)));
}

TEST_F(AccessKey, BothFormsOfYehReachTheInputWhicheverTheCaptionHas)
{
    caption(QStringLiteral("  نام خانوادگ&ي :"));
    EXPECT_TRUE(reaches(QStringLiteral("ي")));
    EXPECT_TRUE(reaches(QStringLiteral("ی")));
}

TEST_F(AccessKey, ADisabledInputIsNotReached)
{
    caption(QStringLiteral("  &کد :"));
    input->setEnabled(false);
    EXPECT_FALSE(reaches(QStringLiteral("ك")));
}

TEST_F(AccessKey, ACheckBoxTurns)
{
    auto *check = form.add(new TSmartCheckBox_ZLM(QStringLiteral("مال&یات")));
    caption(QStringLiteral("  &عنوان :"));
    Keys::press(&form, Qt::Key_unknown, Qt::AltModifier, QStringLiteral("ی"));
    EXPECT_TRUE(check->isChecked());
    Keys::press(&form, Qt::Key_unknown, Qt::AltModifier, QStringLiteral("ي"));
    EXPECT_FALSE(check->isChecked());
}
