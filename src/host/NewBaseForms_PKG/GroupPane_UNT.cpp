#include "host/NewBaseForms_PKG/GroupPane_UNT.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/database/ListPlace.h"
#include "host/database/Query.h"

#include <QContextMenuEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

TGroup_Pane::TGroup_Pane(TQuery *groups, const QString &gridName, const QString &columnCaption,
                         const QString &buttonCaption, QWidget *parent)
    : QWidget(parent), Group_BTN(new TSmartButton_ZLM(buttonCaption, this)),
      SearchGroup_EDT(new TSmartEdit_ZLM(this)), Grid(new TSmartGrid_ZLM(gridName, this)),
      GroupList_PUM(new QMenu(this)), m_groups(groups)
{
    setObjectName(u"Group_PNL"_s);
    Group_BTN->setObjectName(u"Group_BTN"_s);
    Group_BTN->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    Group_BTN->setToolTip(u"F11"_s);
    SearchGroup_EDT->setObjectName(u"SearchGroup_EDT"_s);
    SearchGroup_EDT->setAccessibleName(Hint());
    GroupList_PUM->setObjectName(u"GroupList_PUM"_s);
    const auto item = [this](const QString &caption, const char *name) {
        QAction *action = GroupList_PUM->addAction(caption);
        action->setObjectName(QString::fromLatin1(name));
        return action;
    };
    GNew_PMI = item(u"جدید"_s, "GNew_PMI");
    GEdit_PMI = item(u"ویرایش"_s, "GEdit_PMI");
    GDelete_PMI = item(u"حذف"_s, "GDelete_PMI");

    auto *box = new QGroupBox(u"گروه"_s, this);
    auto *inside = new QVBoxLayout(box);
    inside->addWidget(Group_BTN);
    inside->addWidget(SearchGroup_EDT);
    inside->addWidget(Grid, 1);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(box);
    setMinimumWidth(169);

    Grid->SetColumns(m_groups, {{u"Name"_s, columnCaption, 120}});
    Grid->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(Grid, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &at) { GroupList_PUM->exec(Grid->viewport()->mapToGlobal(at)); });
    connect(m_groups, &TQuery::currentChanged, this, [this] {
        if (!m_rereading && m_groups->active())
            Q_EMIT groupMoved();
    });
    SearchGroup_EDT->installEventFilter(this);
    connect(SearchGroup_EDT, &QLineEdit::textChanged, this, &TGroup_Pane::search);
    showHint(true);
}

QString TGroup_Pane::Hint()
{
    return u"جستجو ... (Ctrl + F11)"_s;
}

int TGroup_Pane::CurrentCode() const
{
    return m_groups->active() && m_groups->position() >= 0 ? m_groups->asInteger(u"Code"_s) : 0;
}

void TGroup_Pane::Reread(bool toLast)
{
    const int before = CurrentCode();
    {
        const QScopedValueRollback rereading(m_rereading, true);
        Guarded([&] {
            const TListPlace place(*m_groups, u"Code"_s);
            ResetDataset(m_groups);
            m_groups->open();
            if (toLast)
                m_groups->last();
            else
                place.restore(*m_groups);
        });
    }
    if (m_groups->active() && CurrentCode() != before)
        Q_EMIT groupMoved();
}

void TGroup_Pane::showHint(bool on)
{
    m_hint = on;
    QPalette palette = SearchGroup_EDT->parentWidget()->palette();
    if (on)
        palette.setColor(QPalette::Text, Qt::gray);
    SearchGroup_EDT->setPalette(palette);
    SearchGroup_EDT->SetText(on ? Hint() : QString());
}

void TGroup_Pane::search()
{
    const QString text = SearchGroup_EDT->text();
    if (m_hint || text.isEmpty() || text == Hint() || !m_groups->active())
        return;
    Guarded([&] { m_groups->locate(u"Name"_s, text, TQuery::PartialKey); });
}

bool TGroup_Pane::HandleKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_F11)
        return false;
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::ControlModifier)
        SearchGroup_EDT->setFocus(Qt::ShortcutFocusReason);
    else if (modifiers == Qt::NoModifier && !event->isAutoRepeat())
        Group_BTN->click();
    else
        return false;
    return true;
}

bool TGroup_Pane::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == SearchGroup_EDT) {
        if (event->type() == QEvent::FocusIn && m_hint) {
            showHint(false);
        } else if (event->type() == QEvent::FocusOut && !m_hint && SearchGroup_EDT->text().isEmpty()) {
            showHint(true);
        } else if (event->type() == QEvent::KeyPress) {
            const auto *key = static_cast<QKeyEvent *>(event);
            if (key->key() == Qt::Key_Escape && !m_hint && !SearchGroup_EDT->text().isEmpty()) {
                SearchGroup_EDT->SetText({});
                return true;
            }
            if (key->key() == Qt::Key_Down || key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
                Grid->setFocus(Qt::TabFocusReason);
                return true;
            }
        }
    }
    return QWidget::eventFilter(watched, event);
}
