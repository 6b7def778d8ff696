#pragma once

#include "host/Export.h"

#include <QString>

#include <exception>

/// Files encrypted with a password: how a backup leaves the house.
///
/// A header (version, cost, salt, length), then the text in parts, each encrypted and authenticated, in their order and with
/// the header, by XChaCha20-Poly1305; the last one is marked. docs/administrator.md gives the layout.

/// Why a sealed file is not opened.
enum class TSealFault {
    NoPassword,    ///< it is sealed, and no password was given
    WrongPassword, ///< its header is whole, and the password is another one
    Broken,        ///< something in it was damaged, changed, repeated or put elsewhere
    Cut,           ///< its end is missing
    OtherVersion   ///< a newer version of the suite sealed it
};

/// A sealed file that is refused. Copyable, and safe to keep.
class KETEBIONPAP_CORE TSealError : public std::exception {
public:
    TSealError(TSealFault fault, const QString &file);
    ~TSealError() override;
    TSealFault fault() const { return m_fault; }
    /// Whether another password may be the cure.
    bool asksForPassword() const
    {
        return m_fault == TSealFault::NoPassword || m_fault == TSealFault::WrongPassword;
    }
    /// One clear Persian sentence: what happened and what the user can do.
    QString userText() const;
    const char *what() const noexcept override;

private:
    TSealFault m_fault;
    QByteArray m_what;
};

/// Failures of the disk are thrown as TDatabaseError, memory that is short for the password as std::bad_alloc.
namespace SealedFile {

/// What a try of a password costs, and how the text is divided. The file keeps it.
struct TShape {
    quint64 operations; ///< passes of Argon2id over its memory
    quint64 memory;     ///< bytes, at least 8192
    quint32 partSize;   ///< bytes of text in each part but the last one
};
/// 256 MB of memory and about a second for each try; parts of 64 KB.
KETEBIONPAP_CORE TShape usualShape();

/// Whether a file begins as a sealed one. Opens it: not for a file that SqliteFile::isHeldOpen.
bool isSealed(const QString &file);

/// Writes `plain`, encrypted, over what `sealed` holds, a private file that is there; brings it to the disk, and reads it
/// back from there to the end. It takes the memory of three parts, and that of the password.
KETEBIONPAP_CORE void seal(const QString &plain, const QString &sealed, const QString &password,
                           const TShape &shape = usualShape());

/// Writes what was sealed over what `plain` holds, a private file that is there. Throws TSealError; `plain` then holds
/// nothing.
KETEBIONPAP_CORE void open(const QString &sealed, const QString &plain, const QString &password);

} // namespace SealedFile
