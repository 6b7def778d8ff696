#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"

#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Specialmessages.h"

#include <QHash>

namespace {

QHash<int, TEntityPicker> &pickers()
{
    static QHash<int, TEntityPicker> all;
    return all;
}

QHash<int, TEntityPicker> &usualPickers()
{
    static QHash<int, TEntityPicker> all;
    return all;
}

int pick(TSoftwarePart part, const QString &text)
{
    const TEntityPicker picker = pickers().value(part, usualPickers().value(part));
    if (!picker)
        return SayNothingToPick();
    int picked = 0; // a fault is as good as a cancel
    Guarded([&] { picked = picker(text); });
    return picked;
}

} // namespace

int SayNothingToPick()
{
    ShowSmartMessage(ntNothingToPick, nullptr, nullptr, 0);
    return 0;
}

void RegisterEntityPicker(TSoftwarePart part, const TEntityPicker &picker)
{
    if (picker)
        pickers().insert(part, picker);
    else
        pickers().remove(part);
}

void SetUsualEntityPicker(TSoftwarePart part, const TEntityPicker &picker)
{
    usualPickers().insert(part, picker);
}

int Select_Entity(TSoftwarePart part, const QString &text, bool)
{
    return pick(part, text);
}

int Open_FiscalDeductionList(TSoftwarePart part, int, const QString &text)
{
    return pick(part, text);
}
