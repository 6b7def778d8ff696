#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"

#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/Groups_UNT.h"

#include <QHash>

namespace {

const int nothingToPick = 7; // notification

QHash<int, TEntityPicker> &pickers()
{
    static QHash<int, TEntityPicker> all;
    return all;
}

int sayNothingToPick()
{
    ShowSmartMessage(nothingToPick, nullptr, nullptr, 0);
    return 0;
}

/// Runs a screen; a database error is told to the user and is as good as a cancel.
template <class Work>
auto guarded(Work work) -> decltype(work())
{
    try {
        return work();
    } catch (const TDatabaseError &error) {
        MsgDatabaseError(error);
        return {};
    }
}

int pick(TSoftwarePart part, const QString &text)
{
    const TEntityPicker picker = pickers().value(part);
    return picker ? guarded([&] { return picker(text); }) : sayNothingToPick();
}

} // namespace

void RegisterEntityPicker(TSoftwarePart part, const TEntityPicker &picker)
{
    if (picker)
        pickers().insert(part, picker);
    else
        pickers().remove(part);
}

int Select_Entity(TSoftwarePart part, const QString &text, bool)
{
    // A person's group is the host's own; no module has to be there for it.
    if (part == cspPerson && !pickers().contains(part))
        return Select_GroupList(part, text);
    return pick(part, text);
}

int Open_FiscalDeductionList(TSoftwarePart part, int, const QString &text)
{
    return pick(part, text);
}

int Select_GroupList(TSoftwarePart part, const QString &text)
{
    const TGroupKind *kind = GroupKindOf(part);
    if (!kind)
        return sayNothingToPick();
    return guarded([&] {
        TGroupList_FRM list(fmSelect, *kind, text);
        return list.exec() == QDialog::Accepted ? list.SelectedCode : 0;
    });
}

bool New_Group(TSoftwarePart part)
{
    const TGroupKind *kind = GroupKindOf(part);
    return kind && guarded([&] { return TGroupGet_FRM(*kind).exec() == QDialog::Accepted; });
}

bool Edit_Group(TSoftwarePart part, int code)
{
    const TGroupKind *kind = GroupKindOf(part);
    return kind && !RefuseGroupOfAll(*kind, code) &&
           guarded([&] { return TGroupGet_FRM(*kind, code).exec() == QDialog::Accepted; });
}

bool Delete_Group(TSoftwarePart part, int code)
{
    const TGroupKind *kind = GroupKindOf(part);
    return kind && guarded([&] { return TGroupList_FRM::Delete(*kind, code, part); });
}
