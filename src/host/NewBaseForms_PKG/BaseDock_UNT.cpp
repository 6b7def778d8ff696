#include "host/NewBaseForms_PKG/BaseDock_UNT.h"

#include "host/BaseFrame_PKG/General_Search_Frame.h"
#include "host/BaseFrame_PKG/Tab_Search_Frame.h"
#include "host/Component_ZLM/LayoutStore.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/Commonlibrary_unt.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/BaseGet_UNT.h"
#include "host/NewBaseForms_PKG/GroupPane_UNT.h"
#include "host/NewBaseForms_PKG/ListPrinter.h"
#include "host/database/ListPlace.h"
#include "host/database/Query.h"

#include <QLabel>
#include <QMenu>
#include <QSplitter>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

TBaseDock_FRM::TBaseDock_FRM(TFormMode mode, const QString &text) : TBaseDock_FRM(mode, QVariant(), text) {}

TBaseDock_FRM::TBaseDock_FRM(TFormMode mode, const QVariant &value, const QString &text)
    : m_mode(mode), m_value(value), m_searchPanel(new QVBoxLayout), m_center(new QSplitter(this)),
      m_belowGrid(new QVBoxLayout)
{
    if (!text.isEmpty())
        SetTitle(text);
    m_center->setObjectName(u"Center_SPL"_s);
    m_center->setChildrenCollapsible(false);
    resize(900, 600);
}

TBaseDock_FRM::~TBaseDock_FRM() = default;

void TBaseDock_FRM::BuildList(TQuery *listQuery, const QString &gridName, const QList<TGridColumn> &columns,
                              const QList<TSearchItem> &items)
{
    m_listQuery = listQuery;
    m_grid = new TSmartGrid_ZLM(gridName, this);
    m_grid->SetColumns(listQuery, columns);
    connect(m_grid, &TSmartGrid_ZLM::rowActivated, this, &TBaseDock_FRM::activateRow);
    ZelmoSearchManager1 = new TZelmoSearchManager(listQuery, this);
    ZelmoSearchManager1->setObjectName(u"ZelmoSearchManager1"_s);
    ZelmoSearchManager1->SetItems(items);
    connect(ZelmoSearchManager1, &TZelmoSearchManager::executed, this, [this] { UpdateButtons(); });
    for (const auto signal : {&TQuery::opened, &TQuery::closed})
        connect(listQuery, signal, this, [this] { UpdateButtons(); });
    connect(listQuery, &TQuery::currentChanged, this, [this] { UpdateButtons(); });
}

void TBaseDock_FRM::BuildUsualLayout(const QString &captionPanelText)
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
        m_captionPanel = new QLabel(captionPanelText, this);
        m_captionPanel->setObjectName(u"Caption_PNL"_s);
        m_captionPanel->setAlignment(Qt::AlignCenter);
        m_captionPanel->setFrameShape(QFrame::StyledPanel);
        m_captionPanel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        Body()->addWidget(m_captionPanel);
    }
}

void TBaseDock_FRM::BuildButtons(bool withSelect, bool withPrint)
{
    struct TButton {
        TSmartButton_ZLM **button;
        const char *name;
        QString caption;
        QString shortCaption;
        const char *key;
        bool wanted;
        std::function<void()> action;
    };
    const TButton buttons[] = {
        {&New_BTN, "New_BTN", u"جدید F4"_s, u"جدید"_s, "F4", true, [this] { NewRecord(); }},
        {&EDit_BTN, "EDit_BTN", u"ویرایش F5"_s, u"ویرایش"_s, "F5", true, [this] { EditRecord(); }},
        {&Del_BTN, "Del_BTN", u"حذف F7"_s, u"حذف"_s, "F7", true, [this] { DeleteRecord(); }},
        {&Select_BTN, "Select_BTN", u"انتخاب Enter"_s, u"انتخاب"_s, "Enter", withSelect,
         [this] { Select(); }},
        {&PrintList_BTN, "PrintList_BTN", u"پیش نمایش ليست F9"_s, u"پیش نمایش ليست"_s, "F9", withPrint,
         [this] { PrintPreview(); }},
        {&EXit_BTN, "EXit_BTN", u"خروج Esc"_s, u"خروج"_s, "Esc", true, [this] { reject(); }},
    };
    for (const TButton &row : buttons) {
        if (!row.wanted)
            continue;
        *row.button = AddButton(QString::fromLatin1(row.name), row.caption, QString::fromLatin1(row.key),
                                row.shortCaption);
        connect(*row.button, &QAbstractButton::clicked, this,
                [this, action = row.action] { Guarded(action); });
    }
    UpdateButtons();
}

void TBaseDock_FRM::SetShortCut(QWidget *control)
{
    control->setFocusPolicy(Qt::StrongFocus);
    setTabOrder(control, New_BTN);
}

void TBaseDock_FRM::SetPopMenu(QWidget *control)
{
    control->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(control, &QWidget::customContextMenuRequested, this, [this, control](const QPoint &at) {
        QMenu menu(this);
        for (TSmartButton_ZLM *button : {New_BTN, EDit_BTN, Del_BTN, Select_BTN, PrintList_BTN}) {
            if (!button || button->isHidden())
                continue;
            QAction *action = menu.addAction(button->text());
            action->setEnabled(button->isEnabled());
            connect(action, &QAction::triggered, button, [button] { button->click(); });
        }
        if (auto *grid = qobject_cast<TSmartGrid_ZLM *>(control)) {
            if (grid == m_grid && grid->Model()->rowCount() > 0)
                menu.addAction(u"ذخیره در صفحه گسترده Ctrl+E"_s, this, [this] { SaveSpreadsheet(); });
            menu.addSeparator();
            grid->FillColumnMenu(&menu);
        }
        auto *area = qobject_cast<QAbstractScrollArea *>(control);
        menu.exec((area ? area->viewport() : control)->mapToGlobal(at));
    });
}

void TBaseDock_FRM::setVisible(bool visible)
{
    if (visible && !m_started) {
        m_started = true;
        start();
        restorePanes();
    }
    TBaseForm::setVisible(visible);
}

void TBaseDock_FRM::restorePanes()
{
    QList<int> sizes;
    for (const QString &size : LayoutStore::value(splitterKey()).toStringList())
        sizes << qBound(0, size.toInt(), QWIDGETSIZE_MAX);
    if (sizes.size() == m_center->count())
        m_center->setSizes(sizes);
}

QString TBaseDock_FRM::splitterKey() const
{
    return LayoutStore::windowKey(this) + u"/panes"_s;
}

void TBaseDock_FRM::done(int result)
{
    QStringList sizes;
    for (const int size : m_center->sizes())
        sizes << QString::number(size);
    LayoutStore::setValue(splitterKey(), sizes);
    TBaseForm::done(result);
}

TGroup_Pane *TBaseDock_FRM::BuildGroups(TQuery *groups, const QString &gridName, const QString &columnCaption,
                                        const QString &buttonCaption)
{
    Groups = new TGroup_Pane(groups, gridName, columnCaption, buttonCaption, this);
    m_center->insertWidget(0, Groups);
    m_center->setStretchFactor(0, 0);
    m_center->setStretchFactor(1, 1);
    return Groups;
}

void TBaseDock_FRM::start()
{
    Guarded([this] {
        ParameterStep();
        SetListText();
        PrepareSearch();
    });
    if (New_BTN && m_grid) {
        SetShortCut(m_grid);
        SetPopMenu(m_grid);
    }
    Guarded([this] {
        if (m_listQuery && m_listQuery->active())
            m_listQuery->last();
    });
    UpdateButtons();
    AfterShow();
}

void TBaseDock_FRM::PrepareSearch()
{
    ZelmoSearchManager1->SetSQLScript(m_listQuery->statement());
    if (General_Search)
        General_Search->init(ZelmoSearchManager1);
    else
        ZelmoSearchManager1->ExecuteFilter_DataSet();
}

void TBaseDock_FRM::RefreshList()
{
    const TListPlace place(*m_listQuery, m_listQuery->keyField(), m_grid->SelectedRows());
    ResetDataset(m_listQuery);
    ZelmoSearchManager1->ExecuteFilter_DataSet();
    place.restore(*m_listQuery);
}

void TBaseDock_FRM::AfterShow()
{
    if (m_grid)
        m_grid->setFocus(Qt::OtherFocusReason);
}

void TBaseDock_FRM::NewRecord()
{
    ShowEditor(CreateEditor(true));
}

void TBaseDock_FRM::EditRecord()
{
    ShowEditor(CreateEditor(false));
}

bool TBaseDock_FRM::ShowEditor(TBaseGet_FRM *editor)
{
    if (!editor)
        return false;
    const std::unique_ptr<TBaseGet_FRM> owner(editor);
    if (editor->NotShowable)
        return false;
    const bool existing = editor->Mode() != fmNew && m_listQuery->active() && m_listQuery->position() >= 0;
    const qlonglong opened = existing ? m_listQuery->keyAt(m_listQuery->position()) : 0;
    TConnection &connection = *m_listQuery->connection();
    connection.clearLastError();
    if (editor->exec() != Accepted) {
        // Who just gave a silent line up does not wait for it once more.
        if (existing && !(connection.lastError() && IsLineLost(connection.lastError()->fault())))
            dropIfGone(opened);
        return false;
    }
    Guarded([&] {
        RefreshList();
        showSaved(editor->SavedIdentifier().toLongLong());
    });
    return true;
}

// What was just entered is what the next key is about.
void TBaseDock_FRM::showSaved(qlonglong key)
{
    if (!m_listQuery->active())
        return;
    const int row = m_listQuery->rowOfKey(key);
    if (row >= 0)
        m_listQuery->moveTo(row);
    else if (ZelmoSearchManager1->IsStored(key))
        MsgSavedOutOfSight(QString::number(key), this);
}

void TBaseDock_FRM::dropIfGone(qlonglong key)
{
    try {
        if (!ZelmoSearchManager1->IsStored(key))
            RefreshList();
    } catch (const TDatabaseError &) {
        // The editor told about the line; the row is asked for again before anything is done with it.
    }
}

bool TBaseDock_FRM::CurrentIsStored()
{
    if (m_listQuery->position() < 0)
        return false;
    if (ZelmoSearchManager1->IsStored(m_listQuery->keyAt(m_listQuery->position())))
        return true;
    MsgRecordGone();
    RefreshList();
    return false;
}

void TBaseDock_FRM::UpdateButtons()
{
    const bool row = m_listQuery && m_listQuery->active() && !m_listQuery->isEmpty();
    for (TSmartButton_ZLM *button : {EDit_BTN, Del_BTN, PrintList_BTN})
        if (button)
            button->setEnabled(row);
    if (Select_BTN)
        Select_BTN->setEnabled(row && m_mode == fmSelect);
}

void TBaseDock_FRM::activateRow()
{
    if (Select_BTN && Select_BTN->isEnabled())
        Select_BTN->click();
    else if (EDit_BTN)
        EDit_BTN->click();
}

void TBaseDock_FRM::Select()
{
    if (Select_BTN && Select_BTN->isEnabled() && ChoiceIsStored() && SelectRecord())
        done(Accepted);
}

void TBaseDock_FRM::PrintPreview()
{
    TListPreview_FRM preview(m_grid, windowTitle(), this);
    preview.exec();
}

void TBaseDock_FRM::SaveSpreadsheet()
{
    if (m_grid && m_grid->Model()->rowCount() > 0)
        ExportSpreadsheet(m_grid, windowTitle(), this);
}

bool TBaseDock_FRM::MayDelete(TSoftwarePart part)
{
    return HavePermission(UserInfo, part, cpDelete, false, true, {});
}

bool TBaseDock_FRM::BeginDelete(TSoftwarePart part, const QString &eventText)
{
    return MayDelete(part) && CurrentIsStored() && ConfirmDelete(part, eventText, RecordName());
}

QString TBaseDock_FRM::RecordName() const
{
    return m_grid->NameOfRow(m_listQuery->position());
}

void TBaseDock_FRM::TellDeleteFailed(const QString &word)
{
    MsgHasSubRecords(word, DM.ADOConnection1->lastError());
}

bool TBaseDock_FRM::ConfirmDelete(TSoftwarePart part, const QString &eventText, const QString &record)
{
    if (!MsgDeleteRow(record))
        return false;
    if (!eventText.isNull())
        SetUserEvent(part, cpDelete, eventText, false, false); // what cannot be recorded is not deleted
    return true;
}

bool TBaseDock_FRM::HandleKey(QKeyEvent *event)
{
    if ((Tab_Search && Tab_Search->HandleKey(event)) || (Groups && Groups->HandleKey(event)))
        return true;
    if (event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_E) {
        SaveSpreadsheet();
        return true;
    }
    return TBaseForm::HandleKey(event);
}
