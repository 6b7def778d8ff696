#pragma once

#include <QByteArray>
#include <QIODevice>

/// What a picture file says about itself, read without decoding it: a small file can keep a decoder busy for minutes.
namespace PictureFile {

enum class TKind { Other, Jpeg, Png };
/// By the first bytes, whatever the file's name.
TKind kindOf(const QByteArray &bytes);

/// The parts of a JPEG.
struct TJpegParts {
    bool whole = false; ///< its end mark follows its image data
    int segments = 0;   ///< tables and notes; a decoder's list of them takes the square of their number
    int scans = 0;      ///< each one is a way through the whole picture
};
TJpegParts jpegParts(const QByteArray &bytes);

/// A PNG without what is no part of the picture: texts and colour profiles are packed, a thousand times smaller than what
/// they unpack to. Empty when the chunks do not follow each other to the end mark, or are more than `mostChunks`.
QByteArray plainPng(const QByteArray &bytes, int mostChunks);

} // namespace PictureFile

/// Bytes in memory that stop coming when the reading thread has worked longer than allowed (its own time, not that of the
/// clock: a busy machine refuses no sound picture).
class TTimedBytes : public QIODevice {
public:
    TTimedBytes(const QByteArray &bytes, int milliseconds);
    bool ranOut() const { return m_ranOut; }
    qint64 size() const override { return m_bytes.size(); }

protected:
    qint64 readData(char *data, qint64 most) override;
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qint64 m_end;
    bool m_ranOut = false;
};
