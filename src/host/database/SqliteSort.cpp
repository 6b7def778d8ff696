#include "host/database/SqliteSort.h"

#include <sqlite3.h>
#include <unicode/ucol.h>
#include <unicode/uiter.h>

#include <array>
#include <memory>
#include <vector>

namespace {

using TCollator = std::unique_ptr<UCollator, decltype(&ucol_close)>;

UCollator *persian()
{
    static const TCollator collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        TCollator opened(ucol_open("fa", &status), &ucol_close);
        return U_SUCCESS(status) ? std::move(opened) : TCollator(nullptr, &ucol_close);
    }();
    return collator.get();
}

void sortKey(sqlite3_context *context, int, sqlite3_value **arguments)
{
    sqlite3_value *value = arguments[0];
    UCollator *collator = persian();
    if (sqlite3_value_type(value) != SQLITE_TEXT || !collator) {
        sqlite3_result_value(context, value);
        return;
    }
    const auto *text = static_cast<const UChar *>(sqlite3_value_text16(value));
    const int length = sqlite3_value_bytes16(value) / 2;
    std::array<uint8_t, 512> room;
    const int32_t size = ucol_getSortKey(collator, text, length, room.data(), int32_t(room.size()));
    if (size <= int32_t(room.size())) {
        sqlite3_result_blob(context, room.data(), size, SQLITE_TRANSIENT);
        return;
    }
    std::vector<uint8_t> more(static_cast<std::size_t>(size));
    ucol_getSortKey(collator, text, length, more.data(), size);
    sqlite3_result_blob(context, more.data(), size, SQLITE_TRANSIENT);
}

} // namespace

void registerSqliteSort(sqlite3 *db)
{
    sqlite3_create_function_v2(db, "zelmo_sort", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, sortKey,
                               nullptr, nullptr, nullptr);
}
