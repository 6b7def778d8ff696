#include "host/Component_ZLM/SmartControls_ZLM.h"

#include "host/Utility_ZLM/PersianText.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QListView>
#include <QMenu>
#include <QTime>
#include <QWheelEvent>

using namespace Qt::Literals::StringLiterals;

TSmartPickEdit_ZLM::TSmartPickEdit_ZLM(QWidget *parent, Kind kind, int maxLength)
    : TSmartEdit_ZLM(parent, kind, maxLength), m_button(new QToolButton(this))
{
    m_button->setText(u"…"_s);
    m_button->setFocusPolicy(Qt::NoFocus);
    m_button->setCursor(Qt::ArrowCursor);
    m_button->setToolTip(u"انتخاب (F2)"_s);
    connect(m_button, &QToolButton::clicked, this, [this] {
        setFocus(Qt::MouseFocusReason);
        Q_EMIT pick();
    });
}

void TSmartPickEdit_ZLM::keyPressEvent(QKeyEvent *event)
{
    const bool wanted = (event->key() == Qt::Key_F2 && event->modifiers() == Qt::NoModifier) ||
                        (event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier));
    if (wanted && !isReadOnly()) {
        event->accept();
        Q_EMIT pick();
        return;
    }
    TSmartEdit_ZLM::keyPressEvent(event);
}

void TSmartPickEdit_ZLM::resizeEvent(QResizeEvent *event)
{
    TSmartEdit_ZLM::resizeEvent(event);
    const int border = 2;
    const int side = height() - 2 * border;
    m_button->setGeometry(border, border, side + border, side);
    setTextMargins(m_button->width(), 0, 0, 0);
}

void TSmartPickEdit_ZLM::changeEvent(QEvent *event)
{
    TSmartEdit_ZLM::changeEvent(event);
    if (event->type() == QEvent::ReadOnlyChange)
        m_button->setEnabled(!isReadOnly());
}

TSmartButtonEdit_ZLM::TSmartButtonEdit_ZLM(QWidget *parent, int maxLength)
    : TSmartPickEdit_ZLM(parent, Integer, maxLength)
{
}

TSmartSpinEdit_ZLM::TSmartSpinEdit_ZLM(QWidget *parent, int minimum, int maximum) : QSpinBox(parent)
{
    setLocale(QLocale::c());
    setGroupSeparatorShown(false);
    setLayoutDirection(Qt::LeftToRight);
    setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    setFocusPolicy(Qt::StrongFocus);
    setRange(minimum, maximum);
    connect(this, &QSpinBox::valueChanged, this, &TSmartSpinEdit_ZLM::changed);
}

QValidator::State TSmartSpinEdit_ZLM::validate(QString &input, int &position) const
{
    input = PersianText::latinDigits(input);
    return QSpinBox::validate(input, position);
}

int TSmartSpinEdit_ZLM::valueFromText(const QString &text) const
{
    return QSpinBox::valueFromText(PersianText::latinDigits(text));
}

void TSmartSpinEdit_ZLM::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QSpinBox::wheelEvent(event);
    else
        event->ignore();
}

TSmartCheckBox_ZLM::TSmartCheckBox_ZLM(const QString &caption, QWidget *parent) : QCheckBox(caption, parent)
{
    connect(this, &QCheckBox::toggled, this, &TSmartCheckBox_ZLM::changed);
}

namespace {

// The combo box, open or closed, hands typed letters to its view.
class FoldedListView : public QListView {
public:
    using QListView::QListView;

    void keyboardSearch(const QString &typed) override
    {
        if (!model() || model()->rowCount() == 0)
            return;
        if (!m_last.isValid() || m_last.msecsTo(QTime::currentTime()) > QApplication::keyboardInputInterval())
            m_text.clear();
        m_last = QTime::currentTime();
        m_text += PersianText::fold(typed);
        // One letter again and again walks through the items that begin with it.
        const bool sameLetter = m_text.size() > 1 && m_text.count(m_text[0]) == m_text.size();
        if (!find(m_text, m_text.size() > 1 ? 0 : 1) && sameLetter)
            find(m_text.left(1), 1);
    }

private:
    bool find(const QString &beginning, int offset)
    {
        const int rows = model()->rowCount();
        const int start = currentIndex().isValid() ? currentIndex().row() + offset : 0;
        for (int i = 0; i < rows; ++i) {
            const QModelIndex index = model()->index((start + i) % rows, 0);
            if (PersianText::fold(index.data().toString()).trimmed().startsWith(beginning)) {
                setCurrentIndex(index);
                return true;
            }
        }
        return false;
    }

    QString m_text;
    QTime m_last;
};

} // namespace

TSmartComboBox_ZLM::TSmartComboBox_ZLM(QWidget *parent, const QStringList &items) : QComboBox(parent)
{
    setView(new FoldedListView(this));
    setFocusPolicy(Qt::StrongFocus);
    addItems(items);
    connect(this, &QComboBox::currentIndexChanged, this, &TSmartComboBox_ZLM::changed);
}

void TSmartComboBox_ZLM::AddItem(const QString &text, int code)
{
    addItem(text, code);
}

int TSmartComboBox_ZLM::Code() const
{
    return currentData().toInt();
}

bool TSmartComboBox_ZLM::SetCode(int code)
{
    for (int i = 0; i < count(); ++i) {
        if (itemData(i).isValid() && itemData(i).toInt() == code) {
            setCurrentIndex(i);
            return true;
        }
    }
    return false;
}

void TSmartComboBox_ZLM::keyPressEvent(QKeyEvent *event)
{
    if (event->key() >= Qt::Key_F1 && event->key() <= Qt::Key_F35) {
        event->ignore();
        return;
    }
    QComboBox::keyPressEvent(event);
}

void TSmartComboBox_ZLM::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

TSmartButton_ZLM::TSmartButton_ZLM(const QString &caption, QWidget *parent, const QString &shortCaption)
    : QToolButton(parent), m_shortCaption(shortCaption)
{
    setText(caption);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setFocusPolicy(Qt::TabFocus);
    if (!shortCaption.isEmpty())
        setAccessibleName(shortCaption);
}

void TSmartButton_ZLM::SetSaveMode(TSaveMode mode)
{
    m_saveMode = mode;
    if (mode == svNone) {
        setMenu(nullptr);
        setPopupMode(DelayedPopup);
        return;
    }
    if (!menu()) {
        auto *ways = new QMenu(this);
        const auto add = [&](const QString &text, TSaveMode way) {
            QAction *action = ways->addAction(text, this, [this, way] { Q_EMIT saveRequested(way); });
            action->setData(int(way));
        };
        add(u"ذخیره\tShift+F3"_s, svSave);
        add(u"ذخیره و خروج"_s, svSaveClose);
        add(u"ذخیره و جدید\tCtrl+F3"_s, svSaveNew);
        setMenu(ways);
        setPopupMode(MenuButtonPopup);
    }
    // The way that F3 goes stands out.
    for (QAction *action : menu()->actions()) {
        QFont font = action->font();
        font.setBold(action->data().toInt() == mode);
        action->setFont(font);
    }
}

void TSmartButton_ZLM::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    if (menu() && event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier)) {
        showMenu();
        return;
    }
    QToolButton::keyPressEvent(event);
}
