#include "host/BaseFrame_PKG/Detail_Rows_Frame.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/database/ListPlace.h"
#include "host/database/Query.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

TDetail_Rows_Frame::TDetail_Rows_Frame(QWidget *parent, const QString &gridName, const Captions &captions,
                                       const QStringList &buttonNames, bool enterEdits)
    : QWidget(parent), m_grid(new TSmartGrid_ZLM(gridName, this)), m_side(new QVBoxLayout),
      m_enterEdits(enterEdits)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_grid, 1);
    layout->addLayout(m_side);

    const auto button = [&](const QString &caption, int index, auto action) -> TSmartButton_ZLM * {
        if (caption.isEmpty())
            return nullptr;
        auto *made = new TSmartButton_ZLM(caption, this);
        made->setObjectName(buttonNames.value(index));
        made->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        made->setFocusPolicy(Qt::TabFocus);
        connect(made, &QToolButton::clicked, this, action);
        m_side->addWidget(made);
        return made;
    };
    AddRow = button(captions.add, 0, [this] { Q_EMIT addRow(); });
    EditRow = button(captions.edit, 1, [this] { requestEdit(); });
    DelRow = button(captions.del, 2, [this] { requestDelete(); });
    m_side->addStretch(1);

    connect(m_grid, &TSmartGrid_ZLM::rowActivated, this, &TDetail_Rows_Frame::requestEdit);
    connect(m_grid, &TSmartGrid_ZLM::keyPressed, this, &TDetail_Rows_Frame::onKey);
}

void TDetail_Rows_Frame::SetColumns(TQuery *query, const QList<TGridColumn> &columns)
{
    m_query = query;
    m_grid->SetColumns(query, columns);
    connect(query, &TQuery::opened, this, &TDetail_Rows_Frame::updateButtons);
    connect(query, &TQuery::closed, this, &TDetail_Rows_Frame::updateButtons);
    updateButtons();
}

void TDetail_Rows_Frame::Reread(const QString &keyField, const QVariant &key)
{
    const TListPlace place(*m_query, keyField);
    // The list is reset when it is read; what the user looks at must not move.
    const int scrolled = m_grid->verticalScrollBar()->value();
    m_query->close();
    m_query->open();
    if (key.isNull() || !m_query->locate(keyField, key))
        place.restore(*m_query);
    m_grid->verticalScrollBar()->setValue(scrolled);
    m_grid->scrollTo(m_grid->currentIndex());
}

void TDetail_Rows_Frame::onKey(QKeyEvent *event)
{
    const bool pad = event->modifiers().testFlag(Qt::KeypadModifier);
    const int key = event->key();
    if (event->modifiers() & ~Qt::KeypadModifier)
        return;
    if (pad && key == Qt::Key_Plus)
        Q_EMIT addRow();
    else if ((pad && key == Qt::Key_Asterisk) ||
             (m_enterEdits && (key == Qt::Key_Return || key == Qt::Key_Enter)))
        requestEdit();
    else if (key == Qt::Key_Delete || (pad && key == Qt::Key_Minus))
        requestDelete();
    else
        return;
    event->accept();
}

void TDetail_Rows_Frame::requestEdit()
{
    if (m_query && m_query->active() && !m_query->isEmpty())
        Q_EMIT editRow();
}

void TDetail_Rows_Frame::requestDelete()
{
    if (m_query && m_query->active() && !m_query->isEmpty() && DelRow && DelRow->isEnabled())
        Q_EMIT deleteRow();
}

void TDetail_Rows_Frame::updateButtons()
{
    const bool rows = m_query && m_query->active() && !m_query->isEmpty();
    if (EditRow)
        EditRow->setEnabled(rows);
    if (DelRow)
        DelRow->setEnabled(rows);
}
