#include "host/NewBaseForms_PKG/BaseDock_UNT.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/Permission_logs_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/BaseGet_UNT.h"
#include "host/database/Query.h"

#include <QMenu>

using namespace Qt::Literals::StringLiterals;

TBaseDock_FRM::TBaseDock_FRM(TFormMode mode, const QString &text) : TBaseDock_FRM(mode, QVariant(), text) {}

TBaseDock_FRM::TBaseDock_FRM(TFormMode mode, const QVariant &value, const QString &text)
    : m_mode(mode), m_value(value)
{
    if (!text.isEmpty())
        SetTitle(text);
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

void TBaseDock_FRM::ServeGrid()
{
    if (!New_BTN || !Grid())
        return;
    SetShortCut(Grid());
    SetPopMenu(Grid());
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
            if (grid == Grid() && grid->Model()->rowCount() > 0)
                menu.addAction(u"ذخیره در صفحه گسترده Ctrl+E"_s, this, [this] { SaveSpreadsheet(); });
            menu.addSeparator();
            grid->FillColumnMenu(&menu);
        }
        auto *area = qobject_cast<QAbstractScrollArea *>(control);
        menu.exec((area ? area->viewport() : control)->mapToGlobal(at));
    });
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
    const bool existing = editor->Mode() != fmNew && ListQuery()->active() && ListQuery()->position() >= 0;
    const qlonglong opened = existing ? ListQuery()->keyAt(ListQuery()->position()) : 0;
    TConnection &connection = *ListQuery()->connection();
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
    if (!ListQuery()->active())
        return;
    const int row = ListQuery()->rowOfKey(key);
    if (row >= 0)
        ListQuery()->moveTo(row);
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
    if (ListQuery()->position() < 0)
        return false;
    if (ZelmoSearchManager1->IsStored(ListQuery()->keyAt(ListQuery()->position())))
        return true;
    MsgRecordGone();
    RefreshList();
    return false;
}

void TBaseDock_FRM::UpdateButtons()
{
    const bool row = ListQuery() && ListQuery()->active() && !ListQuery()->isEmpty();
    for (TSmartButton_ZLM *button : {EDit_BTN, Del_BTN, PrintList_BTN})
        if (button)
            button->setEnabled(row);
    if (Select_BTN)
        Select_BTN->setEnabled(row && m_mode == fmSelect);
}

void TBaseDock_FRM::ActivateRow()
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
    return Grid()->NameOfRow(ListQuery()->position());
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
