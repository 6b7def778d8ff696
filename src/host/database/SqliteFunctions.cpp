#include "host/database/SqliteFunctions.h"

#include "host/Utility_ZLM/PersianText.h"
#include "host/Utility_ZLM/Sha256.h"
#include "host/database/SqliteHandles.h"

#include <QDateTime>
#include <QString>

#include <array>
#include <cstring>
#include <string>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The letters of a UTF-8 text one by one, case folded. Broken bytes count as letters of their own.
class TFoldedLetters {
public:
    TFoldedLetters(const void *text, int size)
        : m_at(static_cast<const unsigned char *>(text)), m_end(m_at + size)
    {
        while (m_end > m_at && m_end[-1] == ' ')
            --m_end;
    }
    bool atEnd() const { return m_at == m_end; }
    char32_t next()
    {
        const unsigned char lead = *m_at++;
        if (lead < 0x80)
            return lead >= 'A' && lead <= 'Z' ? char32_t(lead + 32) : char32_t(lead);
        const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        char32_t letter = more == 3 ? lead & 0x07 : more == 2 ? lead & 0x0F : more == 1 ? lead & 0x1F : lead;
        for (int i = 0; i < more && m_at < m_end; ++i)
            letter = (letter << 6) | (*m_at++ & 0x3F);
        // Arabic letters have no case, and are most of the texts.
        return letter >= 0x0600 && letter <= 0x06FF ? letter : QChar::toCaseFolded(letter);
    }

private:
    const unsigned char *m_at;
    const unsigned char *m_end;
};

int compareZelmo(void *, int sizeA, const void *a, int sizeB, const void *b)
{
    TFoldedLetters left(a, sizeA);
    TFoldedLetters right(b, sizeB);
    while (!left.atEnd() && !right.atEnd()) {
        const char32_t l = left.next();
        const char32_t r = right.next();
        if (l != r)
            return l < r ? -1 : 1;
    }
    return left.atEnd() ? (right.atEnd() ? 0 : -1) : 1;
}

struct TBytes {
    const char *text;
    int size;
};

TBytes bytes(sqlite3_value *value)
{
    // The text first: asking for it may change how many bytes there are.
    const char *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return {text, sqlite3_value_bytes(value)};
}

QString string(sqlite3_value *value)
{
    const TBytes utf8 = bytes(value);
    return QString::fromUtf8(utf8.text, utf8.size);
}

void answer(sqlite3_context *context, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    sqlite3_result_text(context, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
}

bool anyNull(int count, sqlite3_value **values)
{
    for (int i = 0; i < count; ++i)
        if (sqlite3_value_type(values[i]) == SQLITE_NULL)
            return true;
    return false;
}

// UTF-16 units, as the server counts: a lead byte of four bytes stands for two.
int unitsIn(const char *text, qsizetype size)
{
    int units = 0;
    for (qsizetype i = 0; i < size; ++i) {
        const unsigned char byte = static_cast<unsigned char>(text[i]);
        units += (byte & 0xC0) == 0x80 ? 0 : byte >= 0xF0 ? 2 : 1;
    }
    return units;
}

/// The text in small letters; false when it has letters but those of ASCII and the Arabic ones, which have no case.
bool lowered(TBytes text, std::string &small)
{
    small.assign(text.text, size_t(text.size));
    for (size_t i = 0; i < small.size(); ++i) {
        const auto byte = static_cast<unsigned char>(small[i]);
        if (byte >= 'A' && byte <= 'Z')
            small[i] = char(byte + 32);
        else if (byte >= 0xC0 && (byte < 0xD8 || byte > 0xDB))
            return false;
    }
    return true;
}

// charindex(what, text [, from]): the place of the first occurrence from 1, 0 when there is none.
void charindex(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(count, values))
        return sqlite3_result_null(context);
    const qsizetype from = count > 2 ? qMax(1, sqlite3_value_int(values[2])) - 1 : 0;
    static thread_local std::string what;
    static thread_local std::string text;
    if (from == 0 && lowered(bytes(values[0]), what) && lowered(bytes(values[1]), text)) {
        const void *found =
            what.empty() ? nullptr : memmem(text.data(), text.size(), what.data(), what.size());
        const qsizetype offset = found ? static_cast<const char *>(found) - text.data() : -1;
        return sqlite3_result_int(context, offset < 0 ? 0 : unitsIn(text.data(), offset) + 1);
    }
    const QString sought = string(values[0]);
    const qsizetype place =
        sought.isEmpty() ? -1 : string(values[1]).indexOf(sought, from, Qt::CaseInsensitive);
    sqlite3_result_int(context, int(place) + 1);
}

// Trailing blanks do not count.
void len(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(count, values))
        return sqlite3_result_null(context);
    TBytes text = bytes(values[0]);
    while (text.size > 0 && text.text[text.size - 1] == ' ')
        --text.size;
    sqlite3_result_int(context, unitsIn(text.text, text.size));
}

void substring(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(count, values))
        return sqlite3_result_null(context);
    const qint64 from = sqlite3_value_int64(values[1]);
    const qint64 length = sqlite3_value_int64(values[2]);
    if (length < 0)
        return sqlite3_result_error(context, "the length of substring is below zero", -1);
    const QString text = string(values[0]);
    const qint64 first = qBound(qint64(1), from, qint64(text.size()) + 1);
    const qint64 end = qBound(first, from + qMin(length, qint64(text.size()) + 1), qint64(text.size()) + 1);
    answer(context, text.mid(first - 1, end - first));
}

void left(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(count, values))
        return sqlite3_result_null(context);
    answer(context, string(values[0]).left(qMax(0, sqlite3_value_int(values[1]))));
}

void right(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(count, values))
        return sqlite3_result_null(context);
    answer(context, string(values[0]).right(qMax(0, sqlite3_value_int(values[1]))));
}

void getdate(sqlite3_context *context, int, sqlite3_value **)
{
    answer(context, QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss.zzz"_s));
}

void utcNow(sqlite3_context *context, int, sqlite3_value **)
{
    answer(context, QDateTime::currentDateTimeUtc().toString(u"yyyy-MM-ddTHH:mm:ss"_s));
}

/// What PersianText::fold makes of the letters that nearly all texts consist of, taken from it letter by letter.
class TFoldTable {
public:
    TFoldTable()
    {
        for (int i = 0; i < int(m_arabic.size()); ++i) {
            const QByteArray folded = PersianText::fold(QString(QChar(first + i))).toUtf8();
            Q_ASSERT(folded.size() <= 2);
            m_arabic[size_t(i)].size = quint8(folded.size());
            memcpy(m_arabic[size_t(i)].bytes, folded.constData(), size_t(folded.size()));
        }
    }
    enum class Found { Yes, No, Unknown };
    /// Whether the folded text contains `what`, which is folded and not empty. It is looked for while the text is
    /// folded, so that most of a text that has it is not. Unknown: a letter is not of those.
    Found find(TBytes what, TBytes text) const
    {
        static thread_local std::string room; // the folded text is never longer than the text
        if (room.size() < size_t(text.size))
            room.resize(size_t(text.size));
        char *const begin = room.data();
        char *to = begin;
        const char last = what.text[what.size - 1];
        bool blank = false; // runs of blanks are one
        for (int i = 0; i < text.size; ++i) {
            const auto lead = static_cast<unsigned char>(text.text[i]);
            if (lead < 0x80) {
                if (lead == ' ' && blank)
                    continue;
                blank = lead == ' ';
                *to++ = char(lead >= 'A' && lead <= 'Z' ? lead + 32 : lead);
            } else if (lead >= 0xD8 && lead <= 0xDB && i + 1 < text.size) {
                const int letter = ((lead & 0x1F) << 6) | (text.text[++i] & 0x3F);
                const TLetter &made = m_arabic[size_t(letter - first)];
                for (int byte = 0; byte < made.size; ++byte)
                    *to++ = made.bytes[byte];
                blank = blank && made.size == 0;
            } else {
                return Found::Unknown;
            }
            if (to - begin >= what.size && to[-1] == last &&
                memcmp(to - what.size, what.text, size_t(what.size)) == 0)
                return Found::Yes;
        }
        return Found::No;
    }

private:
    struct TLetter {
        char bytes[2];
        quint8 size;
    };
    static constexpr int first = 0x0600;
    std::array<TLetter, 0x100> m_arabic = {};
};

// zelmo_finds(what, text): 1 when the folded text contains what, which is folded already. One call for folding and
// finding: a search asks for every row of the list with every letter that is typed.
void finds(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(count, values))
        return sqlite3_result_null(context);
    static const TFoldTable table;
    const TBytes what = bytes(values[0]);
    if (what.size == 0)
        return sqlite3_result_int(context, 0);
    const TFoldTable::Found found = table.find(what, bytes(values[1]));
    if (found == TFoldTable::Found::Unknown)
        return sqlite3_result_int(context,
                                  PersianText::fold(string(values[1])).contains(string(values[0])) ? 1 : 0);
    sqlite3_result_int(context, found == TFoldTable::Found::Yes ? 1 : 0);
}

// zelmo_same(what, text): 1 when the folded text, without blanks at its ends, is what, which is such a text already.
void same(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(count, values))
        return sqlite3_result_null(context);
    static const TFoldTable table;
    const TBytes what = bytes(values[0]);
    // Nearly all rows end here: what is not there at all is not the same.
    if (what.size > 0 && table.find(what, bytes(values[1])) == TFoldTable::Found::No)
        return sqlite3_result_int(context, 0);
    sqlite3_result_int(context, PersianText::fold(string(values[1])).trimmed() == string(values[0]) ? 1 : 0);
}

// The next unique code of a detail, whatever its kind (the server has it as a function in the schema).
void uniqueCode(sqlite3_context *context, int, sqlite3_value **)
{
    sqlite3 *db = sqlite3_context_db_handle(context);
    Sqlite::TStatement statement;
    if (statement.prepare(db, "SELECT ifnull(max(DetailUniqueCode), 0) + 1 FROM Perinf") == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW)
        sqlite3_result_int64(context, sqlite3_column_int64(statement, 0));
    else
        sqlite3_result_error(context, sqlite3_errmsg(db), -1);
}

// The link of an event line after another one (the server has it as a function in the schema).
void eventLink(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(count, values))
        return sqlite3_result_null(context);
    const QByteArray link = Sha256::hex((string(values[0]) + string(values[1])).toLatin1()).toLatin1();
    sqlite3_result_text(context, link.constData(), int(link.size()), SQLITE_TRANSIENT);
}

} // namespace

void registerSqliteFunctions(sqlite3 *db)
{
    sqlite3_create_collation_v2(db, "ZELMO", SQLITE_UTF8, nullptr, compareZelmo, nullptr);
    struct TFunction {
        const char *name;
        int arguments;
        int flags;
        void (*call)(sqlite3_context *, int, sqlite3_value **);
    };
    constexpr int pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    const TFunction functions[] = {{"charindex", 2, pure, charindex},
                                   {"charindex", 3, pure, charindex},
                                   {"len", 1, pure, len},
                                   {"substring", 3, pure, substring},
                                   {"zelmo_left", 2, pure, left},
                                   {"zelmo_right", 2, pure, right},
                                   {"zelmo_finds", 2, pure, finds},
                                   {"zelmo_same", 2, pure, same},
                                   {"getdate", 0, SQLITE_UTF8, getdate},
                                   {"UtcNow_FNC", 0, SQLITE_UTF8, utcNow},
                                   {"EventLink_FNC", 2, pure, eventLink},
                                   {"GetUinqueCode_FNC", 1, SQLITE_UTF8, uniqueCode}};
    for (const TFunction &function : functions)
        sqlite3_create_function_v2(db, function.name, function.arguments, function.flags, nullptr,
                                   function.call, nullptr, nullptr, nullptr);
}
