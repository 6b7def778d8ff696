#include "host/database/OdbcText.h"

#include "host/database/SqlText.h"

Odbc::TPlacedText Odbc::placed(const TBoundStatement &statement)
{
    TPlacedText result;
    const QString &text = statement.text;
    qsizetype used = 0;
    qsizetype from = 0;
    for (const TSqlText::TPlace &place : ReadSql(text).places) {
        result.text += QStringView(text).mid(from, place.at - from);
        result.text += u'?';
        result.values.append(place.name.isEmpty() ? statement.values.value(used++)
                                                  : statement.named.value(place.name));
        from = place.at + place.size;
    }
    result.text += QStringView(text).mid(from);
    return result;
}
