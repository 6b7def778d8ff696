#include "host/Component_ZLM/Appearance.h"

#include "host/Component_ZLM/AccessKeys.h"

#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTextLayout>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

const QColor focusColor(0x1f, 0x6f, 0xb5);
const QColor wrongColor(0xb3, 0x26, 0x1e);

/// A caption without its "&", and which letter is the access key's (-1: none).
struct Caption {
    explicit Caption(const QString &written)
    {
        for (qsizetype i = 0; i < written.size(); ++i) {
            if (written[i] == u'&' && i + 1 < written.size()) {
                ++i;
                if (written[i] != u'&' && letter < 0)
                    letter = int(text.size());
            }
            text += written[i];
        }
    }
    QString text;
    int letter = -1;
};

// The focus must be seen from a step away: inputs, lists and buttons get a thick coloured frame.
class SuiteStyle : public QProxyStyle {
public:
    SuiteStyle() : QProxyStyle(QStyleFactory::create(u"Fusion"_s)) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        if (element == PE_FrameFocusRect) {
            frame(painter, focusRect(option, widget), focusColor);
            return;
        }
        const auto *edit = qstyleoption_cast<const QStyleOptionFrame *>(option);
        if (element == PE_PanelLineEdit && edit && edit->state.testFlag(State_ReadOnly)) {
            QStyleOptionFrame closed = *edit;
            closed.palette.setBrush(QPalette::Base, closed.palette.brush(QPalette::Disabled, QPalette::Base));
            QProxyStyle::drawPrimitive(element, &closed, painter, widget);
            return;
        }
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_PanelButtonCommand && option->state.testFlag(State_HasFocus))
            frame(painter, option->rect, focusColor);
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

    // An underlined letter would be shaped by itself and stand unjoined in its word, so the caption is drawn in one
    // piece and the line under the access key's letter by its own.
    void drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette, bool enabled,
                      const QString &text, QPalette::ColorRole role) const override
    {
        const int mnemonic = flags & (Qt::TextShowMnemonic | Qt::TextHideMnemonic);
        if (!mnemonic || !text.contains(u'&')) {
            QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, role);
            return;
        }
        const Caption caption(text);
        const int plainFlags = flags & ~(Qt::TextShowMnemonic | Qt::TextHideMnemonic);
        QProxyStyle::drawItemText(painter, rect, plainFlags, palette, enabled, caption.text, role);
        if (caption.letter < 0 || !(flags & Qt::TextShowMnemonic) || caption.text.contains(u'\n'))
            return;
        underline(painter, itemTextRect(painter->fontMetrics(), rect, plainFlags, enabled, caption.text),
                  caption, painter->layoutDirection(),
                  role == QPalette::NoRole ? painter->pen().color() : palette.color(role));
    }

    // The same in menus, whose items the style below draws by itself.
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override
    {
        const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
        if (element != CE_MenuItem || !item || !item->text.contains(u'&')) {
            QProxyStyle::drawControl(element, option, painter, widget);
            return;
        }
        const Caption caption(item->text.section(u'\t', 0, 0));
        QStyleOptionMenuItem plain = *item;
        plain.text = caption.text + item->text.mid(item->text.section(u'\t', 0, 0).size());
        QProxyStyle::drawControl(element, &plain, painter, widget);
        if (caption.letter < 0 || !styleHint(SH_UnderlineShortcut, item, widget))
            return;
        // Where Fusion puts a menu item's text: frame, column of check marks, margin.
        const int before =
            2 + std::max(int(item->rect.height() * 0.79), std::max(item->maxIconWidth, 21)) + 3;
        const QFontMetrics metrics(item->font);
        QRect place(item->rect.left() + before, item->rect.top(), metrics.horizontalAdvance(caption.text),
                    metrics.height());
        place.moveTop(item->rect.top() + (item->rect.height() - metrics.height()) / 2);
        painter->save();
        painter->setFont(item->font);
        const bool chosen = item->state.testFlag(State_Selected) && item->state.testFlag(State_Enabled);
        underline(painter, visualRect(item->direction, item->rect, place), caption, item->direction,
                  item->palette.color(chosen ? QPalette::HighlightedText : QPalette::Text));
        painter->restore();
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                           const QWidget *widget) const override
    {
        // A header is measured in bold for the sections that it highlights; where it highlights none, the bold font
        // would be loaded for nothing.
        const auto *header = qobject_cast<const QHeaderView *>(widget);
        const auto *section = qstyleoption_cast<const QStyleOptionHeader *>(option);
        if (type == CT_HeaderSection && header && section && !header->highlightSections()) {
            QStyleOptionHeader regular = *section;
            regular.version = QStyleOptionHeader::Version;
            regular.fontMetrics = header->fontMetrics();
            return QProxyStyle::sizeFromContents(type, &regular, size, widget);
        }
        const QSize normal = QProxyStyle::sizeFromContents(type, option, size, widget);
        // A screen's buttons are not a tool bar's.
        if (type == CT_ToolButton && widget && widget->inherits("TSmartButton_ZLM"))
            return normal + QSize(20, 4);
        return normal;
    }

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        if (metric == PM_DefaultFrameWidth && widget && widget->inherits("QAbstractItemView"))
            return 2;
        if (metric == PM_HeaderMargin)
            return 5;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

private:
    /// The line under a caption's access key, the caption standing in `place`.
    static void underline(QPainter *painter, const QRect &place, const Caption &caption,
                          Qt::LayoutDirection direction, const QColor &color)
    {
        QTextLayout layout(caption.text, painter->font());
        QTextOption option;
        option.setTextDirection(direction);
        option.setWrapMode(QTextOption::NoWrap);
        option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
        layout.setTextOption(option);
        layout.beginLayout();
        QTextLine line = layout.createLine();
        line.setLineWidth(0xFFFF);
        layout.endLayout();
        const qreal from = line.cursorToX(caption.letter);
        const qreal to = line.cursorToX(caption.letter + 1);
        const qreal left =
            direction == Qt::RightToLeft ? place.right() + 1 - line.naturalTextWidth() : qreal(place.left());
        const qreal y =
            place.top() + painter->fontMetrics().ascent() + painter->fontMetrics().underlinePos() + 2;
        painter->fillRect(QRectF(left + std::min(from, to), y, std::abs(to - from), 1), color);
    }

    // Around the box and its caption, not through the caption's edge.
    QRect focusRect(const QStyleOption *option, const QWidget *widget) const
    {
        if (widget && widget->inherits("QToolButton"))
            return widget->rect();
        const bool check = widget && widget->inherits("QCheckBox");
        if (!check && !(widget && widget->inherits("QRadioButton")))
            return option->rect;
        QStyleOptionButton whole;
        whole.initFrom(widget);
        const auto box = check ? SE_CheckBoxIndicator : SE_RadioButtonIndicator;
        return option->rect.united(QProxyStyle::subElementRect(box, &whole, widget))
            .adjusted(-3, 0, 3, 0)
            .intersected(widget->rect());
    }

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
    font.setFamilies(
        {u"Noto Sans Arabic"_s, u"Vazirmatn"_s, u"Noto Sans"_s, u"Noto Naskh Arabic"_s, u"DejaVu Sans"_s});
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

void SetWinControlRightAlign(QWidget *control)
{
    control->setLayoutDirection(Qt::RightToLeft);
}
