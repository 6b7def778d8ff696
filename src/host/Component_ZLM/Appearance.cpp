#include "host/Component_ZLM/Appearance.h"

#include "host/Component_ZLM/AccessKeys.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

namespace {

const QColor focusColor(0x1f, 0x6f, 0xb5);
const QColor wrongColor(0xb3, 0x26, 0x1e);

// The focus must be seen from a step away: inputs, lists and buttons get a thick coloured frame.
class SuiteStyle : public QProxyStyle {
public:
    SuiteStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        if (element == PE_FrameFocusRect) {
            frame(painter, option->rect, focusColor);
            return;
        }
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool framed = element == PE_FrameLineEdit ||
                            (element == PE_Frame && widget && widget->inherits("QAbstractItemView"));
        if (framed && widget && widget->property("wrongValue").toBool())
            frame(painter, option->rect, wrongColor);
        else if (framed && option->state.testFlag(State_HasFocus))
            frame(painter, option->rect, focusColor);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override
    {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        if ((control == CC_ComboBox || control == CC_SpinBox) && option->state.testFlag(State_HasFocus))
            frame(painter, option->rect, focusColor);
    }

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        if (metric == PM_DefaultFrameWidth && widget && widget->inherits("QAbstractItemView"))
            return 2;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

private:
    static void frame(QPainter *painter, const QRect &rect, const QColor &color)
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(color, 2));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(QRectF(rect).adjusted(1, 1, -1, -1), 2, 2);
        painter->restore();
    }
};

QPalette calmPalette()
{
    QPalette palette;
    const QColor text(0x1c, 0x26, 0x30);
    const QColor disabledText(0x5c, 0x66, 0x70);
    palette.setColor(QPalette::Window, QColor(0xf2, 0xf4, 0xf6));
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf3, 0xf7, 0xfa));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::PlaceholderText, QColor(0x6b, 0x75, 0x80));
    palette.setColor(QPalette::Button, QColor(0xe6, 0xea, 0xee));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::ToolTipBase, QColor(0xff, 0xfb, 0xe6));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, QColor(0x2b, 0x6c, 0x9e));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, focusColor);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0xc3, 0xd5, 0xe4));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, disabledText);
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(0xe9, 0xec, 0xef));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xc3, 0xd5, 0xe4));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, disabledText);
    return palette;
}

QFont suiteFont()
{
    QFont font;
    font.setFamilies({QStringLiteral("Noto Sans Arabic"), QStringLiteral("Vazirmatn"),
                      QStringLiteral("Noto Sans"), QStringLiteral("Noto Naskh Arabic"),
                      QStringLiteral("DejaVu Sans")});
    font.setPointSizeF(10);
    return font;
}

} // namespace

void SetUpAppearance(QApplication &application)
{
    QApplication::setStyle(new SuiteStyle);
    QApplication::setPalette(calmPalette());
    QApplication::setFont(suiteFont());
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    application.installEventFilter(new AccessKeys(&application));
}
