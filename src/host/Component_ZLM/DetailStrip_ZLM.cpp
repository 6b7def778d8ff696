#include "host/Component_ZLM/DetailStrip_ZLM.h"

#include "host/Component_ZLM/LayoutStore.h"
#include "host/database/Query.h"

#include <QContextMenuEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

TDetailStrip_ZLM::TDetailStrip_ZLM(QWidget *parent, const QString &objectName, const QString &caption,
                                   TQuery *query, const QList<TGridColumn> &fields, int columnsPerLine)
    : QWidget(parent), m_query(query), m_caption(caption), m_fold(new QToolButton(this)),
      m_box(new QWidget(this)), m_grid(new QGridLayout(m_box)), m_perLine(columnsPerLine)
{
    setObjectName(objectName);
    m_fold->setAccessibleName(caption);
    m_fold->setAutoRaise(true);
    m_fold->setFocusPolicy(Qt::NoFocus);
    connect(m_fold, &QToolButton::clicked, this, [this] {
        SetExpanded(!m_expanded);
        saveLayout();
    });

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_fold);
    layout->addWidget(m_box);
    m_grid->setContentsMargins(6, 0, 6, 4);

    for (const TGridColumn &column : fields) {
        Field field{column, new QLabel(column.caption + u" :"_s, m_box), new QLabel(m_box)};
        field.value->setObjectName(column.field + u"_LBL"_s);
        field.value->setTextFormat(Qt::PlainText); // a comment may hold "<"
        // A number stands beside its caption, too, although it is written from left to right.
        field.value->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        field.value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        field.value->setWordWrap(column.format == TGridColumn::Plain);
        field.value->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        m_fields.append(field);
    }
    arrange();
    SetExpanded(true);
    connect(query, &TQuery::opened, this, &TDetailStrip_ZLM::refresh);
    connect(query, &TQuery::closed, this, &TDetailStrip_ZLM::refresh);
    connect(query, &TQuery::currentChanged, this, &TDetailStrip_ZLM::refresh);
    refresh();
}

QString TDetailStrip_ZLM::ShownText(const QString &field) const
{
    for (const Field &each : m_fields) {
        if (each.column.field.compare(field, Qt::CaseInsensitive) == 0)
            return each.value->text();
    }
    return {};
}

bool TDetailStrip_ZLM::IsExpanded() const
{
    return m_expanded;
}

void TDetailStrip_ZLM::SetExpanded(bool expanded)
{
    m_expanded = expanded;
    // Part of the text: the style draws a button's arrow over the text in a right-to-left window.
    m_fold->setText((expanded ? u"▾ "_s : u"◂ "_s) + m_caption);
    m_box->setVisible(expanded);
}

void TDetailStrip_ZLM::SetFieldShown(const QString &field, bool shown)
{
    for (Field &each : m_fields) {
        if (each.column.field.compare(field, Qt::CaseInsensitive) == 0)
            each.shown = shown;
    }
    arrange();
}

void TDetailStrip_ZLM::refresh()
{
    const bool row = m_query->active() && m_query->position() >= 0;
    for (const Field &each : m_fields) {
        QString text;
        try {
            if (row)
                text = ShownInGrid(each.column, m_query->value(each.column.field));
        } catch (const TDatabaseError &) {
            // The grid beside it tells the user about a row that cannot be read.
        }
        each.value->setText(text);
    }
}

void TDetailStrip_ZLM::arrange()
{
    int place = 0;
    for (const Field &each : m_fields) {
        m_grid->removeWidget(each.caption);
        m_grid->removeWidget(each.value);
        each.caption->setVisible(each.shown);
        each.value->setVisible(each.shown);
        if (!each.shown)
            continue;
        const int row = place / m_perLine;
        const int column = place % m_perLine * 2;
        m_grid->addWidget(each.caption, row, column);
        m_grid->addWidget(each.value, row, column + 1);
        m_grid->setColumnStretch(column + 1, 1);
        ++place;
    }
}

void TDetailStrip_ZLM::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    for (const Field &each : m_fields) {
        QAction *action = menu.addAction(each.column.caption);
        action->setCheckable(true);
        action->setChecked(each.shown);
        const QString field = each.column.field;
        connect(action, &QAction::toggled, this, [this, field](bool on) {
            SetFieldShown(field, on);
            saveLayout();
        });
    }
    menu.exec(event->globalPos());
}

void TDetailStrip_ZLM::showEvent(QShowEvent *event)
{
    if (!m_restored) {
        m_restored = true;
        restoreLayout();
    }
    QWidget::showEvent(event);
}

QString TDetailStrip_ZLM::layoutKey() const
{
    return LayoutStore::windowKey(window()) + u'/' + objectName();
}

void TDetailStrip_ZLM::saveLayout() const
{
    QStringList hidden;
    for (const Field &each : m_fields) {
        if (!each.shown)
            hidden.append(each.column.field);
    }
    const QString text = (IsExpanded() ? u"1;"_s : u"0;"_s) + hidden.join(u',');
    LayoutStore::setValue(layoutKey(), text);
}

void TDetailStrip_ZLM::restoreLayout()
{
    const QString text = LayoutStore::value(layoutKey()).toString();
    if (text.isEmpty())
        return;
    const QStringList hidden = text.section(u';', 1).split(u',', Qt::SkipEmptyParts);
    for (Field &each : m_fields)
        each.shown = !hidden.contains(each.column.field);
    arrange();
    SetExpanded(text.startsWith(u'1'));
}
