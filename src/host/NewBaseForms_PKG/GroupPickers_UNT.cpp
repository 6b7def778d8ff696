#include "host/NewBaseForms_PKG/GroupPickers_UNT.h"

#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/Groups_UNT.h"

namespace {

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

} // namespace

int Select_GroupList(TSoftwarePart part, const QString &text)
{
    const TGroupKind *kind = GroupKindOf(part);
    if (!kind)
        return SayNothingToPick();
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
