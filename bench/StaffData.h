#pragma once

#include "host/database/Statement.h"

#include <QString>

struct sqlite3;
struct sqlite3_stmt;

/// Databases of many employees, made once for each size and kept for the run, and the same work in plain C.
namespace StaffData {

const int groups = 50;

/// A database file of this suite with so many employees in 50 groups; each hundredth has a picture.
QString database(int employees);

/// The list's statement under a condition, as the search manager writes it.
TStatement listOf(const TStatement &condition);

/// What the raw C API needs to find how many rows a list has and to read one page of it.
class Raw {
public:
    Raw(int employees, const TStatement &list);
    /// The same with a condition in the embedded engine's own words.
    Raw(int employees, const QString &condition);
    ~Raw();
    Raw(const Raw &) = delete;
    Raw &operator=(const Raw &) = delete;
    /// Reads both; answers the bytes of the texts.
    long read();

private:
    void prepareBoth(const QString &sql);
    sqlite3_stmt *prepare(const QString &sql);
    sqlite3 *m_db;
    QVariantList m_values;
    sqlite3_stmt *m_count = nullptr;
    sqlite3_stmt *m_page = nullptr;
};

} // namespace StaffData
