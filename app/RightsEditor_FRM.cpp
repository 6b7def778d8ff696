#include "app/RightsEditor_FRM.h"

#include <QHeaderView>
#include <QTableWidget>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

TRightsEditor::TRightsEditor(TFormMode mode) : TBaseEditor(mode), Rights_GRD(new QTableWidget(this))
{
    QList<TSoftwarePart> parts;
    QStringList rights;
    QList<TRightName> names = AllRights();
    // The rights that all parts have come first, then those of one part's own.
    std::stable_partition(names.begin(), names.end(),
                          [](const TRightName &name) { return name.right.right < 100; });
    for (const TRightName &name : std::as_const(names)) {
        if (!parts.contains(name.right.part))
            parts << name.right.part;
        if (!rights.contains(name.rightName))
            rights << name.rightName;
        m_places.append(
            {name.right, int(parts.indexOf(name.right.part)), int(rights.indexOf(name.rightName))});
    }
    Rights_GRD->setObjectName(u"Rights_GRD"_s);
    Rights_GRD->setAccessibleName(u"دسترسی ها"_s);
    Rights_GRD->setRowCount(int(parts.size()));
    Rights_GRD->setColumnCount(int(rights.size()));
    Rights_GRD->setHorizontalHeaderLabels(rights);
    Rights_GRD->horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
    Rights_GRD->horizontalHeader()->setHighlightSections(false);
    Rights_GRD->setTabKeyNavigation(false);
    QStringList captions;
    for (const TSoftwarePart part : std::as_const(parts))
        captions << SoftwarePartName(part);
    Rights_GRD->setVerticalHeaderLabels(captions);
    for (int row = 0; row < parts.size(); ++row) {
        for (int column = 0; column < rights.size(); ++column) {
            auto *item = new QTableWidgetItem;
            item->setFlags(Qt::NoItemFlags);
            Rights_GRD->setItem(row, column, item);
        }
    }
    for (const TPlace &place : std::as_const(m_places)) {
        QTableWidgetItem *item = Rights_GRD->item(place.row, place.column);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
        item->setData(Qt::AccessibleTextRole,
                      u"%1، %2"_s.arg(captions.at(place.row), rights.at(place.column)));
    }
    Rights_GRD->resizeColumnsToContents();
    connect(Rights_GRD, &QTableWidget::itemChanged, this, [this] { SetIsSaved(false); });
}

void TRightsEditor::BuildRightsFooter()
{
    Body()->addWidget(Rights_GRD, 1);
    AddTabStop(Rights_GRD);
    BuildFooter(u"ذخیره F3"_s, u"خروج Esc"_s);
    const auto add = [this](const QString &name, const QString &caption, const QString &key,
                            const std::function<bool(const TPlace &)> &chosen) {
        TSmartButton_ZLM *button = AddButton(name, caption, key);
        connect(button, &QAbstractButton::clicked, this, [this, chosen] { turn(chosen); });
    };
    add(u"TickRow_BTN"_s, u"همه سطر F6"_s, u"F6"_s,
        [this](const TPlace &place) { return place.row == Rights_GRD->currentRow(); });
    add(u"TickColumn_BTN"_s, u"همه ستون F7"_s, u"F7"_s,
        [this](const TPlace &place) { return place.column == Rights_GRD->currentColumn(); });
    add(u"TickAll_BTN"_s, u"همه F8"_s, u"F8"_s, [](const TPlace &) { return true; });
    resize(960, 640);
}

void TRightsEditor::turn(const std::function<bool(const TPlace &)> &chosen)
{
    QList<QTableWidgetItem *> items;
    for (const TPlace &place : std::as_const(m_places))
        if (chosen(place))
            items << Rights_GRD->item(place.row, place.column);
    const bool allTicked = std::all_of(items.begin(), items.end(), [](const QTableWidgetItem *item) {
        return item->checkState() == Qt::Checked;
    });
    for (QTableWidgetItem *item : std::as_const(items))
        item->setCheckState(allTicked ? Qt::Unchecked : Qt::Checked);
    Rights_GRD->setFocus();
}

QList<TRight> TRightsEditor::TickedRights() const
{
    QList<TRight> rights;
    for (const TPlace &place : m_places) {
        if (Rights_GRD->item(place.row, place.column)->checkState() == Qt::Checked)
            rights << place.right;
    }
    return rights;
}

void TRightsEditor::TickRights(const QList<TRight> &rights)
{
    for (const TPlace &place : std::as_const(m_places)) {
        Rights_GRD->item(place.row, place.column)
            ->setCheckState(rights.contains(place.right) ? Qt::Checked : Qt::Unchecked);
    }
    if (Rights_GRD->currentRow() < 0)
        Rights_GRD->setCurrentCell(0, 0);
}

void TRightsEditor::MarkRights(const std::function<QString(const TRight &)> &source)
{
    const QSignalBlocker blocker(Rights_GRD); // a mark is no change
    for (const TPlace &place : std::as_const(m_places)) {
        QTableWidgetItem *item = Rights_GRD->item(place.row, place.column);
        const QString text = source(place.right);
        item->setText(text.isEmpty() ? QString() : u"(نقش)"_s);
        item->setToolTip(text.isEmpty() ? QString() : u"از نقش: %1"_s.arg(text));
        item->setData(Qt::AccessibleDescriptionRole, item->toolTip());
    }
    Rights_GRD->viewport()->update();
}
