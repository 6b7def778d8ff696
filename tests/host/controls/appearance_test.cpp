#include "host/controls/Form.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"

#include <QFormLayout>

#include <cmath>

TEST(Appearance, AllControlsTogether)
{
    QWidget form;
    auto *layout = new QFormLayout(&form);
    const auto add = [&](const QString &caption, auto *input) {
        layout->addRow(caption, input);
        return input;
    };
    add(QStringLiteral("  &عنوان :"), new TSmartEdit_ZLM)
        ->SetText(QStringLiteral("روش می‌خواهم ABC 12"));
    add(QStringLiteral("  &کد :"), new TSmartEdit_ZLM(nullptr, TSmartEdit_ZLM::Integer, 15))->SetValue(12);
    add(QStringLiteral("  &مبلغ :"), new TSmartEdit_ZLM(nullptr, TSmartEdit_ZLM::Money, 15))
        ->SetValue(-1234567.5);
    auto *off = add(QStringLiteral("  غیر فعال :"), new TSmartEdit_ZLM);
    off->SetText(QStringLiteral("خاموش"));
    off->setEnabled(false);
    auto *closed = add(QStringLiteral("  فقط خواندنی :"), new TSmartEdit_ZLM);
    closed->SetText(QStringLiteral(" دفتر مرکزي "));
    closed->setReadOnly(true);
    add(QStringLiteral("  کد جدول مالیاتی :"), new TSmartButtonEdit_ZLM)->SetValue(7);
    add(QStringLiteral("  از &تاریخ :"), new TSmartDateEdit_ZLM)->SetText(QStringLiteral("1404/01/05"));
    auto *wrong = add(QStringLiteral("  تا ت&اریخ :"), new TSmartDateEdit_ZLM);
    wrong->SetText(QStringLiteral("1404/12/30"));
    add(QStringLiteral("  ساعت ورود :"), new TSmartTime_ZLM)->SetText(QStringLiteral("08:00"));
    add(QStringLiteral("  &مانده مسکوک :"), new TSmartSpinEdit_ZLM(nullptr, 0, 6));
    add(QStringLiteral("  مبنای اضافه کار / کسر کار :"),
        new TSmartComboBox_ZLM(nullptr, {QStringLiteral("روزانه"), QStringLiteral("ماهانه")}));
    auto *check = add(QString(), new TSmartCheckBox_ZLM(QStringLiteral("م&شمول  مالیات")));
    auto *save = add(QString(), new TSmartButton_ZLM(QStringLiteral("ذخيره F3")));
    save->SetSaveMode(svSaveClose);
    auto *disabled = add(QString(), new TSmartButton_ZLM(QStringLiteral("انتخاب Enter")));
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
    Keys::picture(&form, QStringLiteral("controls_focus_text"));
    for (QWidget *widget : {static_cast<QWidget *>(check), static_cast<QWidget *>(save)}) {
        const QImage before = widget->grab().toImage();
        widget->setFocus(Qt::TabFocusReason);
        EXPECT_NE(before, widget->grab().toImage());
        Keys::picture(&form, QStringLiteral("controls_focus_") +
                                 QString::fromLatin1(widget == check ? "check" : "button"));
    }
}

TEST(Appearance, ACaptionWithAnAccessKeyKeepsItsLettersJoined)
{
    QLineEdit input;
    QLabel plain(QStringLiteral("  از تاریخ :"));
    QLabel marked(QStringLiteral("  از &تاریخ :"));
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
    EXPECT_EQ(QApplication::font().families().value(0), QStringLiteral("Noto Sans Arabic"));
}
