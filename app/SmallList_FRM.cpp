#include "app/SmallList_FRM.h"

#include "app/Ask.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"

#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {
const int narrowest = 60;
const int aroundText = 24;
} // namespace

TSmallList_FRM::TSmallList_FRM(const QString &title, const QString &gridName, const QStringList &captions,
                               int keyColumns)
    : m_table(new QTableWidget(0, int(captions.size()), this)), m_keyColumns(keyColumns)
{
    SetTitle(title);
    m_table->setObjectName(gridName);
    m_table->setHorizontalHeaderLabels(captions);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setMinimumSectionSize(narrowest);
    m_table->verticalHeader()->hide();
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setAlternatingRowColors(true);
    m_table->setTabKeyNavigation(false);
    m_table->setAccessibleName(title);
    Body()->addWidget(m_table);
    resize(760, 440);
}

TSmartButton_ZLM *TSmallList_FRM::AddFreeButton(const QString &objectName, const QString &caption,
                                                const QString &key, std::function<void()> action)
{
    TSmartButton_ZLM *button = AddButton(objectName, caption, key);
    connect(button, &QAbstractButton::clicked, this, [this, action = std::move(action)] {
        Guarded(action);
        m_table->setFocus();
    });
    return button;
}

TSmartButton_ZLM *TSmallList_FRM::AddRowButton(const QString &objectName, const QString &caption,
                                               const QString &key, std::function<void()> action)
{
    TSmartButton_ZLM *button = AddFreeButton(objectName, caption, key, std::move(action));
    m_rowButtons << button;
    return button;
}

void TSmallList_FRM::AddRefreshButton()
{
    AddFreeButton(u"Refresh_BTN"_s, u"بازخوانی F5"_s, u"F5"_s, [this] { Refresh(); });
}

void TSmallList_FRM::AddExitButton()
{
    TSmartButton_ZLM *button = AddButton(u"EXit_BTN"_s, u"خروج Esc"_s, u"Esc"_s);
    connect(button, &QAbstractButton::clicked, this, &TSmallList_FRM::reject);
}

int TSmallList_FRM::exec()
{
    Refresh();
    m_table->setFocus();
    return TBaseForm::exec();
}

void TSmallList_FRM::Refresh()
{
    QList<QStringList> rows;
    Guarded([&] { rows = ReadRows(); });
    QList<QStringList> stay; // the current row, those behind it, those before it
    for (int row = std::max(0, CurrentRow()); row < m_table->rowCount(); ++row)
        stay << keyOf(row);
    for (int row = CurrentRow() - 1; row >= 0; --row)
        stay << keyOf(row);
    m_table->setRowCount(int(rows.size()));
    for (int row = 0; row < rows.size(); ++row) {
        for (int column = 0; column < m_table->columnCount(); ++column) {
            auto *item = new QTableWidgetItem(rows.at(row).value(column));
            item->setToolTip(item->text());
            m_table->setItem(row, column, item);
        }
    }
    m_table->resizeColumnsToContents();
    // The last one has what is left.
    for (int column = 0; column + 1 < m_table->columnCount(); ++column)
        m_table->setColumnWidth(column, m_table->columnWidth(column) + aroundText);
    if (!rows.isEmpty())
        m_table->setCurrentCell(firstLeft(stay), 0);
    for (TSmartButton_ZLM *button : std::as_const(m_rowButtons))
        button->setEnabled(!rows.isEmpty());
}

QStringList TSmallList_FRM::keyOf(int row) const
{
    QStringList key;
    for (int column = 0; column < m_keyColumns; ++column)
        key << m_table->item(row, column)->text();
    return key;
}

int TSmallList_FRM::firstLeft(const QList<QStringList> &keys) const
{
    for (const QStringList &key : keys)
        for (int row = 0; row < m_table->rowCount(); ++row)
            if (keyOf(row) == key)
                return row;
    return 0;
}

int TSmallList_FRM::CurrentRow() const
{
    return m_table->currentRow();
}

void TSmallList_FRM::EnterKey()
{
    if (!m_rowButtons.isEmpty() && m_rowButtons.first()->isEnabled())
        m_rowButtons.first()->click();
}
