#include "host/controls/Form.h"

#include "host/Component_ZLM/Appearance.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"

#include <QFormLayout>
#include <QLineEdit>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

TEST(Appearance, AllControlsTogether)
{
    QWidget form;
    auto *layout = new QFormLayout(&form);
    const auto add = [&](const QString &caption, auto *input) {
        layout->addRow(caption, input);
        return input;
    };
    add(u"  &عنوان :"_s, new TSmartEdit_ZLM)->SetText(u"روش می‌خواهم ABC 12"_s);
    add(u"  &کد :"_s, new TSmartEdit_ZLM(nullptr, TSmartEdit_ZLM::Integer, 15))->SetValue(12);
    add(u"  &مبلغ :"_s, new TSmartEdit_ZLM(nullptr, TSmartEdit_ZLM::Money, 15))->SetValue(-1234567.5);
    auto *off = add(u"  غیر فعال :"_s, new TSmartEdit_ZLM);
    off->SetText(u"خاموش"_s);
    off->setEnabled(false);
    auto *closed = add(u"  فقط خواندنی :"_s, new TSmartEdit_ZLM);
    closed->SetText(u" دفتر مرکزي "_s);
    closed->setReadOnly(true);
    add(u"  کد جدول مالیاتی :"_s, new TSmartButtonEdit_ZLM)->SetValue(7);
    add(u"  از &تاریخ :"_s, new TSmartDateEdit_ZLM)->SetText(u"1404/01/05"_s);
    auto *wrong = add(u"  تا ت&اریخ :"_s, new TSmartDateEdit_ZLM);
    wrong->SetText(u"1404/12/30"_s);
    add(u"  ساعت ورود :"_s, new TSmartTime_ZLM)->SetText(u"08:00"_s);
    add(u"  &مانده مسکوک :"_s, new TSmartSpinEdit_ZLM(nullptr, 0, 6));
    add(u"  مبنای اضافه کار / کسر کار :"_s, new TSmartComboBox_ZLM(nullptr, {u"روزانه"_s, u"ماهانه"_s}));
    auto *check = add(QString(), new TSmartCheckBox_ZLM(u"م&شمول  مالیات"_s));
    auto *save = add(QString(), new TSmartButton_ZLM(u"ذخيره F3"_s));
    save->SetSaveMode(svSaveClose);
    auto *disabled = add(QString(), new TSmartButton_ZLM(u"انتخاب Enter"_s));
    disabled->setEnabled(false);
    form.show();
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    wrong->setFocus();
    // The frame of the focus differs clearly from the same input without it.
    auto *title = qobject_cast<QWidget *>(layout->itemAt(0, QFormLayout::FieldRole)->widget());
    form.setFocus();
    const QImage without = title->grab().toImage();
    title->setFocus();
    const QImage with = title->grab().toImage();
    EXPECT_NE(without.pixelColor(without.width() / 2, 1), with.pixelColor(with.width() / 2, 1));
    const QImage red = wrong->grab().toImage();
    EXPECT_GT(red.pixelColor(red.width() / 2, 1).red(), 150) << "what is no date stands out when it is left";
    EXPECT_LT(red.pixelColor(red.width() / 2, 1).green(), 100);
    Keys::picture(&form, u"controls_focus_text"_s);
    for (QWidget *widget : {static_cast<QWidget *>(check), static_cast<QWidget *>(save)}) {
        const QImage before = widget->grab().toImage();
        widget->setFocus(Qt::TabFocusReason);
        EXPECT_NE(before, widget->grab().toImage());
        Keys::picture(&form,
                      u"controls_focus_"_s + QString::fromLatin1(widget == check ? "check" : "button"));
    }
}

TEST(Appearance, ACaptionWithAnAccessKeyKeepsItsLettersJoined)
{
    QLineEdit input;
    QLabel plain(u"  از تاریخ :"_s);
    QLabel marked(u"  از &تاریخ :"_s);
    marked.setBuddy(&input);
    for (QLabel *label : {&plain, &marked})
        label->resize(plain.sizeHint());
    EXPECT_EQ(plain.sizeHint(), marked.sizeHint());
    const QImage without = plain.grab().toImage();
    const QImage with = marked.grab().toImage();
    int rows = 0;
    for (int y = 0; y < without.height(); ++y) {
        bool differs = false;
        for (int x = 0; x < without.width(); ++x)
            differs = differs || without.pixel(x, y) != with.pixel(x, y);
        rows += differs ? 1 : 0;
    }
    EXPECT_EQ(rows, 1) << "they differ by the line under the letter only";
}

TEST(Appearance, ADisabledInputCanStillBeRead)
{
    const QPalette palette = QApplication::palette();
    const auto luminance = [](const QColor &color) {
        const auto part = [](float value) {
            return value <= 0.03928F ? value / 12.92F : std::pow((value + 0.055F) / 1.055F, 2.4F);
        };
        return 0.2126F * part(color.redF()) + 0.7152F * part(color.greenF()) + 0.0722F * part(color.blueF());
    };
    const float paper = luminance(palette.color(QPalette::Disabled, QPalette::Base));
    const float ink = luminance(palette.color(QPalette::Disabled, QPalette::Text));
    EXPECT_GE((paper + 0.05F) / (ink + 0.05F), 4.5F);
}

TEST(Appearance, TheWindowsRunFromRightToLeftInThePersianFont)
{
    EXPECT_EQ(QApplication::layoutDirection(), Qt::RightToLeft);
    EXPECT_EQ(QApplication::font().families().value(0), u"Noto Sans Arabic"_s);
}

TEST(Appearance, AControlIsLaidOutRightToLeft)
{
    QLineEdit edit;
    edit.setLayoutDirection(Qt::LeftToRight);
    SetWinControlRightAlign(&edit);
    EXPECT_EQ(edit.layoutDirection(), Qt::RightToLeft);
}
