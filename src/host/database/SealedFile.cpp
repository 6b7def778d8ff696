#include "host/database/SealedFile.h"

#include "host/Utility_ZLM/PersianText.h"
#include "host/database/Faults.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sodium.h>
#include <stdexcept>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray magic = QByteArrayLiteral("\x89KetebionpapSeal\n");
const quint32 version = 1;
const quint64 mostOperations = 64;
const quint64 mostMemory = quint64(1) << 30; // a forged header does not take the machine's memory
const quint32 largestPart = 1 << 20;
const quint64 longestText = quint64(1) << 56;

const int saltSize = crypto_pwhash_SALTBYTES;
const int streamSize = crypto_secretstream_xchacha20poly1305_HEADERBYTES;
const int sumSize = 16; // of the check, too
const int keySize = crypto_secretstream_xchacha20poly1305_KEYBYTES;
const int overhead = crypto_secretstream_xchacha20poly1305_ABYTES;

// magic, version, part size, operations, memory, length, salt, header of the stream; check, sum
const qsizetype magicSize = 17;
const qsizetype fieldsSize = magicSize + 4 + 4 + 8 + 8 + 8 + saltSize + streamSize;
const qsizetype headerSize = fieldsSize + sumSize + sumSize;

const char *englishOf(TSealFault fault)
{
    switch (fault) {
    case TSealFault::NoPassword:
        return "no password was given";
    case TSealFault::WrongPassword:
        return "wrong password";
    case TSealFault::Broken:
        return "damaged or changed";
    case TSealFault::Cut:
        return "the end is missing";
    case TSealFault::OtherVersion:
        break;
    }
    return "of another version";
}

void startSodium()
{
    if (sodium_init() < 0)
        throw std::runtime_error("the library for encryption does not start");
}

/// Bytes that leave nothing in memory.
template <int Size>
struct TSecret {
    std::array<unsigned char, Size> bytes{};
    TSecret() = default;
    ~TSecret() { sodium_memzero(bytes.data(), bytes.size()); }
    TSecret(const TSecret &) = delete;
    TSecret &operator=(const TSecret &) = delete;
};

/// A file of this unit, read and written in order. Not QFile: its errors lose the system's reason.
class TFile {
public:
    TFile(const QString &name, int flags)
        : m_name(name), m_file(::open(QFile::encodeName(name).constData(), flags | O_CLOEXEC))
    {
        if (m_file < 0)
            Faults::failWithErrno(name);
    }
    ~TFile() { ::close(m_file); }
    TFile(const TFile &) = delete;
    TFile &operator=(const TFile &) = delete;

    const QString &name() const { return m_name; }
    quint64 size() const { return quint64(QFileInfo(m_name).size()); }
    /// As many bytes as there are, at most `size`.
    QByteArrayView read(QByteArray &room, qsizetype size)
    {
        qsizetype have = 0;
        while (have < size) {
            const ssize_t came = ::read(m_file, room.data() + have, size_t(size - have));
            if (came < 0 && errno == EINTR)
                continue;
            if (came < 0)
                Faults::failWithErrno(m_name);
            if (came == 0)
                break;
            have += came;
        }
        return QByteArrayView(room.constData(), have);
    }
    void write(QByteArrayView bytes)
    {
        while (!bytes.isEmpty()) {
            const ssize_t gone = ::write(m_file, bytes.data(), size_t(bytes.size()));
            if (gone < 0 && errno == EINTR)
                continue;
            if (gone < 0)
                Faults::failWithErrno(m_name);
            bytes = bytes.sliced(gone);
        }
    }
    /// To the disk, and out of the system's memory, so that the next reading comes from the disk.
    void bringToDisk()
    {
        if (::fsync(m_file) != 0)
            Faults::failWithErrno(m_name);
        ::posix_fadvise(m_file, 0, 0, POSIX_FADV_DONTNEED);
    }
    void clear()
    {
        if (::ftruncate(m_file, 0) != 0)
            Faults::failWithErrno(m_name);
    }

private:
    QString m_name;
    int m_file;
};

template <class T>
void append(QByteArray &bytes, T number)
{
    const T little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
}

template <class T>
T take(QByteArrayView &bytes)
{
    const T number = qFromLittleEndian<T>(bytes.data());
    bytes = bytes.sliced(sizeof(T));
    return number;
}

const unsigned char *raw(QByteArrayView bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.data());
}

/// Without a key: whether the header is whole, so that damage is told from a wrong password. With one: whether the key is
/// the one.
QByteArray sumOf(QByteArrayView bytes, const unsigned char *key = nullptr, size_t keyBytes = 0)
{
    QByteArray sum(sumSize, Qt::Uninitialized);
    crypto_generichash(reinterpret_cast<unsigned char *>(sum.data()), sumSize, raw(bytes),
                       size_t(bytes.size()), key, keyBytes);
    return sum;
}

struct THeader {
    SealedFile::TShape shape{};
    quint64 length = 0; ///< of the text
    QByteArray salt;
    QByteArray stream;

    QByteArray fields() const
    {
        QByteArray bytes = magic;
        append(bytes, version);
        append(bytes, shape.partSize);
        append(bytes, shape.operations);
        append(bytes, shape.memory);
        append(bytes, length);
        return bytes + salt + stream;
    }
    quint64 parts() const { return length == 0 ? 1 : (length + shape.partSize - 1) / shape.partSize; }
    quint64 sealedSize() const { return quint64(headerSize) + length + parts() * quint64(overhead); }
};

/// The key of the parts, and behind it that of the header's check.
using TKeys = TSecret<keySize + crypto_generichash_KEYBYTES>;

/// The same password from every keyboard: both forms of yeh and kaf, and all digits, are one.
QByteArray passwordBytes(const QString &password)
{
    return PersianText::latinDigits(QString(password)
                                        .normalized(QString::NormalizationForm_C)
                                        .replace(QChar(0x064a), QChar(0x06cc))
                                        .replace(QChar(0x0643), QChar(0x06a9)))
        .toUtf8();
}

void derive(TKeys &keys, const QString &password, const THeader &header)
{
    QByteArray text = passwordBytes(password);
    const int failed = crypto_pwhash(keys.bytes.data(), keys.bytes.size(), text.constData(),
                                     size_t(text.size()), raw(header.salt), header.shape.operations,
                                     size_t(header.shape.memory), crypto_pwhash_ALG_ARGON2ID13);
    sodium_memzero(text.data(), size_t(text.size()));
    if (failed != 0)
        throw std::bad_alloc();
}

QByteArray checkOf(const QByteArray &fields, const TKeys &keys)
{
    return sumOf(fields, keys.bytes.data() + keySize, crypto_generichash_KEYBYTES);
}

/// Reads the header and holds the file against it; leaves the file before its first part.
THeader readHeader(TFile &file, QByteArray &whole)
{
    QByteArray room(headerSize, Qt::Uninitialized);
    const QByteArrayView read = file.read(room, headerSize);
    if (!read.startsWith(magic))
        throw TSealError(TSealFault::Broken, file.name());
    QByteArrayView rest = read.sliced(magic.size());
    if (rest.size() < qsizetype(sizeof version))
        throw TSealError(TSealFault::Cut, file.name());
    if (take<quint32>(rest) != version)
        throw TSealError(TSealFault::OtherVersion, file.name());
    if (read.size() < headerSize)
        throw TSealError(TSealFault::Cut, file.name());
    if (sumOf(read.first(fieldsSize + sumSize)) != read.sliced(fieldsSize + sumSize))
        throw TSealError(TSealFault::Broken, file.name());
    THeader header;
    header.shape.partSize = take<quint32>(rest);
    header.shape.operations = take<quint64>(rest);
    header.shape.memory = take<quint64>(rest);
    header.length = take<quint64>(rest);
    header.salt = rest.first(saltSize).toByteArray();
    header.stream = rest.sliced(saltSize, streamSize).toByteArray();
    const SealedFile::TShape &shape = header.shape;
    if (shape.partSize < 1 || shape.partSize > largestPart || header.length > longestText ||
        shape.operations < crypto_pwhash_OPSLIMIT_MIN || shape.operations > mostOperations ||
        shape.memory < crypto_pwhash_MEMLIMIT_MIN || shape.memory > mostMemory)
        throw TSealError(TSealFault::Broken, file.name());
    if (file.size() < header.sealedSize())
        throw TSealError(TSealFault::Cut, file.name());
    if (file.size() > header.sealedSize())
        throw TSealError(TSealFault::Broken, file.name());
    whole = read.toByteArray();
    return header;
}

/// Opens all parts after the header, in their order; the text goes to `to` when there is one.
void openParts(TFile &from, const THeader &header, const QByteArray &whole, const TKeys &keys, TFile *to)
{
    TSecret<sizeof(crypto_secretstream_xchacha20poly1305_state)> room;
    auto *stream = reinterpret_cast<crypto_secretstream_xchacha20poly1305_state *>(room.bytes.data());
    crypto_secretstream_xchacha20poly1305_init_pull(stream, raw(header.stream), keys.bytes.data());
    QByteArray sealed(qsizetype(header.shape.partSize) + overhead, Qt::Uninitialized);
    QByteArray text(qsizetype(header.shape.partSize), Qt::Uninitialized);
    quint64 left = header.length;
    for (quint64 part = header.parts(); part > 0; --part) {
        const quint64 expected = std::min<quint64>(left, header.shape.partSize);
        const QByteArrayView came = from.read(sealed, qsizetype(expected) + overhead);
        if (came.size() < qsizetype(expected) + overhead)
            throw TSealError(TSealFault::Cut, from.name());
        unsigned char tag = 0;
        const int failed = crypto_secretstream_xchacha20poly1305_pull(
            stream, reinterpret_cast<unsigned char *>(text.data()), nullptr, &tag, raw(came),
            size_t(came.size()), raw(whole), size_t(whole.size()));
        const bool isLast = tag == crypto_secretstream_xchacha20poly1305_TAG_FINAL;
        if (failed != 0 || isLast != (part == 1))
            throw TSealError(TSealFault::Broken, from.name());
        if (to)
            to->write(QByteArrayView(text).first(qsizetype(expected)));
        left -= expected;
    }
}

} // namespace

TSealError::TSealError(TSealFault fault, const QString &file)
    : m_fault(fault), m_what("sealed file: " + QByteArray(englishOf(fault)) + ": " + file.toUtf8())
{
}

TSealError::~TSealError() = default;

QString TSealError::userText() const
{
    switch (m_fault) {
    case TSealFault::NoPassword:
        return u"این پشتیبان رمز شده است. گذرواژه آن را وارد کنید."_s;
    case TSealFault::WrongPassword:
        return u"گذرواژه این پشتیبان درست نیست. زبان صفحه کلید و بزرگی و کوچکی حروف را بررسی و دوباره وارد کنید."_s;
    case TSealFault::Broken:
        return u"این پشتیبان رمزشده آسیب دیده یا دستکاری شده است و پذیرفته نشد. پشتیبان دیگری را انتخاب کنید."_s;
    case TSealFault::Cut:
        return u"این پشتیبان رمزشده ناتمام است و پذیرفته نشد. آن را دوباره کپی کنید یا پشتیبان دیگری را انتخاب کنید."_s;
    case TSealFault::OtherVersion:
        break;
    }
    return u"این پشتیبان با نسخه دیگری از برنامه رمز شده است. برنامه را به روز کنید."_s;
}

const char *TSealError::what() const noexcept
{
    return m_what.constData();
}

SealedFile::TShape SealedFile::usualShape()
{
    return {crypto_pwhash_OPSLIMIT_MODERATE, crypto_pwhash_MEMLIMIT_MODERATE, 64 * 1024};
}

bool SealedFile::isSealed(const QString &file)
{
    if (!QFileInfo(file).isFile())
        return false;
    TFile read(file, O_RDONLY);
    QByteArray room(magic.size(), Qt::Uninitialized);
    return read.read(room, magic.size()) == magic;
}

void SealedFile::seal(const QString &plain, const QString &sealed, const QString &password,
                      const TShape &shape)
{
    startSodium();
    TFile from(plain, O_RDONLY);
    TFile to(sealed, O_RDWR);
    THeader header;
    header.shape = shape;
    header.length = from.size();
    header.salt.resize(saltSize);
    randombytes_buf(header.salt.data(), size_t(saltSize));
    header.stream.resize(streamSize);
    TKeys keys;
    derive(keys, password, header);

    TSecret<sizeof(crypto_secretstream_xchacha20poly1305_state)> room;
    auto *stream = reinterpret_cast<crypto_secretstream_xchacha20poly1305_state *>(room.bytes.data());
    crypto_secretstream_xchacha20poly1305_init_push(
        stream, reinterpret_cast<unsigned char *>(header.stream.data()), keys.bytes.data());
    const QByteArray fields = header.fields();
    const QByteArray checked = fields + checkOf(fields, keys);
    const QByteArray whole = checked + sumOf(checked);
    to.clear();
    to.write(whole);
    QByteArray text(qsizetype(shape.partSize), Qt::Uninitialized);
    QByteArray part(qsizetype(shape.partSize) + overhead, Qt::Uninitialized);
    quint64 left = header.length;
    for (quint64 number = header.parts(); number > 0; --number) {
        const quint64 expected = std::min<quint64>(left, shape.partSize);
        const QByteArrayView read = from.read(text, qsizetype(expected));
        if (quint64(read.size()) != expected)
            throw TDatabaseError(TFault::CannotOpen, plain + u": it became shorter"_s);
        crypto_secretstream_xchacha20poly1305_push(
            stream, reinterpret_cast<unsigned char *>(part.data()), nullptr, raw(read), size_t(read.size()),
            raw(whole), size_t(whole.size()),
            number == 1 ? crypto_secretstream_xchacha20poly1305_TAG_FINAL : 0);
        to.write(QByteArrayView(part).first(read.size() + overhead));
        left -= expected;
    }
    to.bringToDisk();

    TFile back(sealed, O_RDONLY);
    QByteArray wholeBack;
    const THeader headerBack = readHeader(back, wholeBack);
    if (wholeBack != whole)
        throw TSealError(TSealFault::Broken, sealed);
    openParts(back, headerBack, wholeBack, keys, nullptr);
}

void SealedFile::open(const QString &sealed, const QString &plain, const QString &password)
{
    startSodium();
    TFile from(sealed, O_RDONLY);
    TFile to(plain, O_RDWR);
    to.clear();
    QByteArray whole;
    const THeader header = readHeader(from, whole);
    if (password.isEmpty())
        throw TSealError(TSealFault::NoPassword, sealed);
    TKeys keys;
    derive(keys, password, header);
    const QByteArray check = checkOf(whole.first(fieldsSize), keys);
    if (sodium_memcmp(check.constData(), whole.constData() + fieldsSize, sumSize) != 0)
        throw TSealError(TSealFault::WrongPassword, sealed);
    try {
        openParts(from, header, whole, keys, &to);
    } catch (...) {
        to.clear();
        throw;
    }
}
