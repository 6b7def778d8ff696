#include "host/database/ListPlace.h"

#include "host/database/Query.h"

#include <QSet>

namespace {

const int neighbours = 64; // on each side; others may have deleted some of them

} // namespace

TListPlace::TListPlace(const TQuery &query, const QString &keyField, const QList<int> &leaving)
    : m_keyField(keyField)
{
    if (!query.active() || query.position() < 0)
        return;
    const bool windowed = !query.keyField().isEmpty();
    const int column = windowed ? -1 : query.fieldIndex(keyField);
    const auto add = [&](int row) {
        m_keys.append(windowed ? QVariant(query.keyAt(row)) : query.valueAt(row, column));
    };
    const QSet<int> without(leaving.begin(), leaving.end());
    const int here = query.position();
    add(here);
    for (const int step : {1, -1}) {
        int found = 0;
        for (int row = here + step; row >= 0 && row < query.recordCount() && found < neighbours;
             row += step) {
            if (without.contains(row))
                continue;
            add(row);
            ++found;
        }
    }
}

bool TListPlace::restore(TQuery &query) const
{
    if (!query.active() || query.isEmpty())
        return false;
    const bool windowed = !query.keyField().isEmpty();
    for (const QVariant &key : m_keys) {
        if (!windowed) {
            if (query.locate(m_keyField, key))
                return true;
            continue;
        }
        const int row = query.rowOfKey(key.toLongLong());
        if (row < 0)
            continue;
        query.moveTo(row);
        return true;
    }
    return false;
}
