#include "host/NewBaseForms_PKG/GroupPickers_UNT.h"

#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/NewBaseForms_PKG/Groups_UNT.h"

namespace {

/// Whether work that runs a screen answered true; a fault is told to the user and is as good as a cancel.
bool accepted(const std::function<bool()> &work)
{
    bool answer = false;
    return Guarded([&] { answer = work(); }) && answer;
}

} // namespace

int Select_GroupList(TSoftwarePart part, const QString &text)
{
    const TGroupKind *kind = GroupKindOf(part);
    if (!kind)
        return SayNothingToPick();
    int chosen = 0;
    Guarded([&] {
        TGroupList_FRM list(fmSelect, *kind, text);
        chosen = list.exec() == QDialog::Accepted ? list.SelectedCode : 0;
    });
    return chosen;
}

bool New_Group(TSoftwarePart part)
{
    const TGroupKind *kind = GroupKindOf(part);
    return kind && accepted([&] { return TGroupGet_FRM(*kind).exec() == QDialog::Accepted; });
}

bool Edit_Group(TSoftwarePart part, int code)
{
    const TGroupKind *kind = GroupKindOf(part);
    return kind && !RefuseGroupOfAll(*kind, code) &&
           accepted([&] { return TGroupGet_FRM(*kind, code).exec() == QDialog::Accepted; });
}

bool Delete_Group(TSoftwarePart part, int code)
{
    const TGroupKind *kind = GroupKindOf(part);
    return kind && accepted([&] { return TGroupList_FRM::Delete(*kind, code, part); });
}
