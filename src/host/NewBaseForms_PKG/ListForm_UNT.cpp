#include "host/NewBaseForms_PKG/ListForm_UNT.h"

#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/BaseFrame_PKG/Tab_Search_Frame.h"
#include "host/Component_ZLM/LayoutStore.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/NewBaseForms_PKG/GroupPane_UNT.h"
#include "host/NewBaseForms_PKG/ListExport.h"
#include "host/NewBaseForms_PKG/ListPrinter.h"
#include "host/database/ListPlace.h"
#include "host/database/Query.h"

#include <QLabel>
#include <QSplitter>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

TListForm::TListForm()
    : m_searchPanel(new QVBoxLayout), m_center(new QSplitter(this)), m_belowGrid(new QVBoxLayout)
{
    m_center->setObjectName(u"Center_SPL"_s);
    m_center->setChildrenCollapsible(false);
    resize(900, 600);
}

void TListForm::BuildList(TQuery *listQuery, const QString &gridName, const QList<TGridColumn> &columns,
                          const QList<TSearchItem> &items)
{
    m_listQuery = listQuery;
    m_grid = new TSmartGrid_ZLM(gridName, this);
    m_grid->SetColumns(listQuery, columns);
    m_grid->SetCopyDoor([this](int rows) { return rows < 2 || Door().letOut(u"کپی سطرها"_s, rows); });
    connect(m_grid, &TSmartGrid_ZLM::rowActivated, this, &TListForm::ActivateRow);
    ZelmoSearchManager1 = new TZelmoSearchManager(listQuery, this);
    ZelmoSearchManager1->setObjectName(u"ZelmoSearchManager1"_s);
    ZelmoSearchManager1->SetItems(items);
    connect(ZelmoSearchManager1, &TZelmoSearchManager::executed, this, [this] { UpdateButtons(); });
    for (const auto signal : {&TQuery::opened, &TQuery::closed})
        connect(listQuery, signal, this, [this] { UpdateButtons(); });
    connect(listQuery, &TQuery::currentChanged, this, [this] { UpdateButtons(); });
}

void TListForm::BuildUsualLayout(const QString &captionPanelText)
{
    General_Search = new TGeneral_Search_Frame(this);
    connect(General_Search, &TGeneral_Search_Frame::searchChanged, ZelmoSearchManager1,
            &TZelmoSearchManager::ExecuteFilter_DataSet);
    connect(General_Search, &TGeneral_Search_Frame::leaveDown, this,
            [this] { m_grid->setFocus(Qt::TabFocusReason); });
    m_searchPanel->addWidget(General_Search);
    Body()->addLayout(m_searchPanel);
    auto *main = new QWidget(m_center);
    auto *column = new QVBoxLayout(main);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_grid, 1);
    column->addLayout(m_belowGrid);
    m_center->addWidget(main);
    m_center->setStretchFactor(m_center->indexOf(main), 1);
    Body()->addWidget(m_center, 1);
    if (!captionPanelText.isEmpty()) {
        auto *caption = new QLabel(captionPanelText, this);
        caption->setObjectName(u"Caption_PNL"_s);
        caption->setAlignment(Qt::AlignCenter);
        caption->setFrameShape(QFrame::StyledPanel);
        caption->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        Body()->addWidget(caption);
    }
}

void TListForm::setVisible(bool visible)
{
    if (visible && !m_started) {
        m_started = true;
        start();
        restorePanes();
    }
    TBaseForm::setVisible(visible);
}

void TListForm::restorePanes()
{
    QList<int> sizes;
    for (const QString &size : LayoutStore::value(splitterKey()).toStringList())
        sizes << qBound(0, size.toInt(), QWIDGETSIZE_MAX);
    if (sizes.size() == m_center->count())
        m_center->setSizes(sizes);
}

QString TListForm::splitterKey() const
{
    return LayoutStore::windowKey(this) + u"/panes"_s;
}

void TListForm::done(int result)
{
    QStringList sizes;
    for (const int size : m_center->sizes())
        sizes << QString::number(size);
    LayoutStore::setValue(splitterKey(), sizes);
    TBaseForm::done(result);
}

TGroup_Pane *TListForm::BuildGroups(TQuery *groups, const QString &gridName, const QString &columnCaption,
                                    const QString &buttonCaption)
{
    Groups = new TGroup_Pane(groups, gridName, columnCaption, buttonCaption, this);
    m_center->insertWidget(0, Groups);
    m_center->setStretchFactor(0, 0);
    m_center->setStretchFactor(1, 1);
    return Groups;
}

void TListForm::start()
{
    Guarded([this] {
        ParameterStep();
        SetListText();
        PrepareSearch();
    });
    ServeGrid();
    Guarded([this] {
        if (m_listQuery && m_listQuery->active())
            m_listQuery->last();
    });
    UpdateButtons();
    AfterShow();
}

void TListForm::PrepareSearch()
{
    ZelmoSearchManager1->SetSQLScript(m_listQuery->statement());
    if (General_Search)
        General_Search->init(ZelmoSearchManager1);
    else
        ZelmoSearchManager1->ExecuteFilter_DataSet();
}

void TListForm::RefreshList()
{
    const TListPlace place(*m_listQuery, m_listQuery->keyField(), m_grid->SelectedRows());
    ResetDataset(m_listQuery);
    ZelmoSearchManager1->ExecuteFilter_DataSet();
    place.restore(*m_listQuery);
}

void TListForm::AfterShow()
{
    if (m_grid)
        m_grid->setFocus(Qt::OtherFocusReason);
}

TListDoor TListForm::Door() const
{
    TListDoor door = m_door;
    door.title = windowTitle();
    return door;
}

void TListForm::PrintPreview()
{
    const TListDoor door = Door();
    if (!door.letOut(u"پیش نمایش"_s, m_grid->Model()->rowCount()))
        return;
    TListPreview_FRM preview(m_grid, door, this);
    preview.exec();
}

void TListForm::SaveSpreadsheet()
{
    if (m_grid && m_grid->Model()->rowCount() > 0)
        Guarded([this] { ExportSpreadsheet(m_grid, Door(), this); });
}

bool TListForm::HandleKey(QKeyEvent *event)
{
    if ((Tab_Search && Tab_Search->HandleKey(event)) || (Groups && Groups->HandleKey(event)))
        return true;
    if (event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_E) {
        SaveSpreadsheet();
        return true;
    }
    return TBaseForm::HandleKey(event);
}
