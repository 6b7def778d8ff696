#pragma once

#include "host/Export.h"

#include <QDateTime>
#include <QMap>
#include <QString>

#include <memory>

/// Copies of an embedded database, made and taken back while it is in use.
namespace Backup {

/// Writes the database as it stands now into `target`, one file that is whole in itself. An older file of that name is
/// replaced only after the copy was checked; after an error it is as it was. What a killed backup left in the folder
/// of `target` goes. With a password it is encrypted (SealedFile) and read back to its end; the copy to encrypt stands
/// beside the database meanwhile. Throws TDatabaseError, and TSealError when what was written reads back otherwise.
KETEBIONPAP_CORE void save(const QString &databaseFile, const QString &target, const QString &password = {});

/// Takes away the copies that killed programs left beside the database; those of a running one stay. Throws nothing.
KETEBIONPAP_CORE void removeLeftovers(const QString &databaseFile);

/// What a backup holds, for the user to know it by.
struct TContents {
    QDateTime fileTime;            ///< when the file was last written
    QString lastEvent;             ///< "1403/09/01 08:05:10" of the event log; empty when it has none
    QMap<QString, qlonglong> rows; ///< the number of rows by table
};

/// The way back in two steps, so that the user can be asked between them.
class KETEBIONPAP_CORE TRestore {
public:
    /// Copies the backup beside the database, checks the copy and brings one of an older version up to date; the
    /// backup itself and the database stay as they are. Throws TDatabaseError for every file that is no sound
    /// database of this suite: besides damaged pages one that lacks a table, a column, a view, an index or a trigger
    /// of its version, has other triggers or unique indexes on them, or references that lead nowhere. An encrypted
    /// backup wants its password, or throws TSealError; others take no notice of one.
    TRestore(const QString &databaseFile, const QString &source, const QString &password = {});
    ~TRestore();

    const TContents &contents() const;
    /// How long run() waits for those who write, in milliseconds; usualPatience without it.
    void setPatience(int milliseconds);
    /// Replaces what the database holds by what the backup holds, in one transaction, and saves what it held before
    /// into `before` (no name: does not). After an error the database is as it was, and there is no `before`. The
    /// code locks of the backup's time are left out. Throws TDatabaseError: BeingEdited when at this moment a record
    /// is open in an editor.
    void run(const QString &before = {});

private:
    struct TParts;
    std::unique_ptr<TParts> m_parts;
};

/// Both steps at once. Throws TDatabaseError and TSealError.
KETEBIONPAP_CORE void restore(const QString &databaseFile, const QString &source,
                              const QString &password = {});

} // namespace Backup
