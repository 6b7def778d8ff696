#include "host/ZelmoSearch/FoldedTwin.h"

#include "host/Utility_ZLM/PersianText.h"
#include "host/database/Connection.h"
#include "host/database/Query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const int soughtLetters = 6; // more narrow no further, and each is work for the server

QString folded(const QString &text)
{
    return PersianText::fold(text).trimmed();
}

/// All characters that fold to one letter, among those that people type.
QString formsOf(QChar letter)
{
    static const QString yehs = QString::fromUtf16(u"\u06CC\u064A\u0649");
    static const QString kafs = QString::fromUtf16(u"\u06A9\u0643");
    if (yehs.contains(letter))
        return yehs;
    if (kafs.contains(letter))
        return kafs;
    if (letter >= u'0' && letter <= u'9') {
        const int digit = letter.digitValue();
        return QString(letter) + QChar(0x06F0 + digit) + QChar(0x0660 + digit);
    }
    return letter.toUpper() == letter ? QString(letter) : QString(letter) + letter.toUpper();
}

// Folding whole columns takes a server seconds for a hundred thousand rows. Rows that have all the letters are few, and
// are compared here.
TStatement hasLetters(const QString &column, const QString &wanted)
{
    TStatement condition("(1 = 1");
    QString asked;
    for (const QChar letter : wanted) {
        // What lies outside the usual letters may fold from characters that are not known here.
        if (asked.size() >= soughtLetters || asked.contains(letter) || letter.isSpace() ||
            letter.isSurrogate() ||
            (letter.unicode() >= 0x80 && !(letter.unicode() >= 0x0600 && letter.unicode() <= 0x06FF)))
            continue;
        asked += letter;
        condition.sql(u" and ("_s);
        const QString forms = formsOf(letter);
        for (qsizetype i = 0; i < forms.size(); ++i)
            condition.sql(i == 0 ? u"charindex("_s : u" or charindex("_s)
                .text(forms.mid(i, 1))
                .sql(u", cast("_s + column + u" as nvarchar(4000)) collate Latin1_General_BIN2) > 0"_s);
        condition.sql(u")"_s);
    }
    return condition.sql(u")"_s);
}

TStatement mayBe(const TConnection &connection, const QString &column, const QString &wanted)
{
    if (!connection.hasSearchFunctions())
        return hasLetters(column, wanted);
    return TStatement(u"zelmo_same("_s).text(wanted).sql(u", "_s + column + u") = 1"_s);
}

QString titleOf(TConnection &connection, const QString &table, const QStringList &columns, int code)
{
    TQuery query(&connection, u"Twin_QUR"_s);
    query.setStatement(
        TStatement(u"select "_s + columns.join(u", ") + u" from "_s + table + u" where Code="_s)
            .integer(code));
    query.open();
    QStringList title;
    for (int i = 0; i < columns.size() && !query.isEmpty(); ++i)
        title << query.valueAt(0, i).toString().trimmed();
    title.removeAll(QString());
    return title.join(u' ');
}

} // namespace

std::optional<TTwin> FindTwin(TConnection &connection, const QString &table, const QList<TUniqueText> &texts,
                              int own, const QStringList &titleColumns)
{
    // Only columns that one index has: all its texts are read in less time than all rows.
    QStringList columns{u"Code"_s};
    for (const TUniqueText &text : texts) {
        if (folded(text.typed).isEmpty())
            return std::nullopt;
        columns << text.column;
    }
    TStatement statement(u"select "_s + columns.join(u", ") + u" from "_s + table + u" where Code<>"_s);
    statement.integer(own);
    for (const TUniqueText &text : texts)
        statement.sql(u" and "_s).append(mayBe(connection, text.column, folded(text.typed)));

    TQuery query(&connection, u"Twin_QUR"_s);
    query.setStatement(statement);
    query.open();
    std::optional<TTwin> twin;
    for (int row = 0; row < query.recordCount(); ++row) {
        const int code = query.valueAt(row, 0).toInt();
        bool same = !twin || code < twin->code;
        for (int i = 0; i < texts.size() && same; ++i)
            same = folded(query.valueAt(row, i + 1).toString()) == folded(texts.at(i).typed);
        if (same)
            twin = TTwin{code, {}};
    }
    if (twin)
        twin->title = titleOf(connection, table, titleColumns, twin->code);
    return twin;
}

QString TwinText(const TTwin &twin)
{
    return twin.title.isEmpty() ? u"رکورد دارنده آن: کد %1"_s.arg(twin.code)
                                : u"رکورد دارنده آن: %2 (کد %1)"_s.arg(twin.code).arg(twin.title);
}
