#include "host/Declaration_PKG/PictureFile_unt.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <ctime>

namespace {

const QByteArray pngMark = QByteArrayLiteral("\x89PNG\r\n\x1a\n");

// Marks of a JPEG: 0xff and one of these.
constexpr quint8 startOfPicture = 0xd8;
constexpr quint8 endOfPicture = 0xd9;
constexpr quint8 startOfScan = 0xda;

/// Marks without a length of their own.
bool standsAlone(quint8 mark)
{
    return mark == 0x01 || (mark >= 0xd0 && mark <= startOfPicture);
}

/// The place of the next mark: 0xff and neither a stuffed zero, a restart, nor a fill byte. -1: none.
qsizetype nextMark(const QByteArray &bytes, qsizetype at)
{
    for (at = bytes.indexOf('\xff', at); at >= 0 && at + 1 < bytes.size();
         at = bytes.indexOf('\xff', at + 1)) {
        const quint8 mark = quint8(bytes[at + 1]);
        if (mark != 0 && mark != 0xff && !standsAlone(mark))
            return at;
    }
    return -1;
}

qint64 workedMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
}

bool belongsToPicture(const char *chunk)
{
    for (const char *kept : {"IHDR", "PLTE", "IDAT", "IEND", "tRNS", "gAMA", "cHRM", "sRGB", "sBIT"})
        if (std::memcmp(chunk, kept, 4) == 0)
            return true;
    return false;
}

} // namespace

PictureFile::TKind PictureFile::kindOf(const QByteArray &bytes)
{
    if (bytes.startsWith(QByteArrayLiteral("\xff\xd8\xff")))
        return TKind::Jpeg;
    return bytes.startsWith(pngMark) ? TKind::Png : TKind::Other;
}

PictureFile::TJpegParts PictureFile::jpegParts(const QByteArray &bytes)
{
    TJpegParts parts;
    for (qsizetype at = nextMark(bytes, 2); at >= 0; at = nextMark(bytes, at)) {
        const quint8 mark = quint8(bytes[at + 1]);
        if (mark == endOfPicture) {
            parts.whole = parts.scans > 0;
            break;
        }
        if (at + 4 > bytes.size())
            break;
        ++(mark == startOfScan ? parts.scans : parts.segments);
        // The small picture that a camera puts before the scans, with an end mark of its own, is leapt over.
        at += 2 + std::max<int>(2, qFromBigEndian<quint16>(bytes.constData() + at + 2));
        if (at > bytes.size())
            break;
    }
    return parts;
}

QByteArray PictureFile::plainPng(const QByteArray &bytes, int mostChunks)
{
    constexpr qsizetype around = 12; // length, name and check sum of a chunk
    QByteArray plain = pngMark;
    plain.reserve(bytes.size());
    qsizetype at = pngMark.size();
    for (int chunks = 1; chunks <= mostChunks && at + around <= bytes.size(); ++chunks) {
        const char *chunk = bytes.constData() + at;
        const qsizetype length = qsizetype(qFromBigEndian<quint32>(chunk)) + around;
        if (length > bytes.size() - at)
            break;
        if (belongsToPicture(chunk + 4))
            plain.append(chunk, length);
        if (std::memcmp(chunk + 4, "IEND", 4) == 0)
            return plain;
        at += length;
    }
    return {};
}

TTimedBytes::TTimedBytes(const QByteArray &bytes, int milliseconds)
    : m_bytes(bytes), m_end(workedMilliseconds() + milliseconds)
{
    open(ReadOnly | Unbuffered);
}

qint64 TTimedBytes::readData(char *data, qint64 most)
{
    m_ranOut = m_ranOut || workedMilliseconds() > m_end;
    if (m_ranOut)
        return -1;
    const qint64 count = std::clamp<qint64>(m_bytes.size() - pos(), 0, most);
    std::memcpy(data, m_bytes.constData() + pos(), size_t(count));
    return count;
}
