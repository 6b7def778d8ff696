#include "host/Declaration_PKG/Picturefunctions_unt.h"

#include "host/Declaration_PKG/PictureFile_unt.h"
#include "host/database/Query.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>

using namespace Qt::Literals::StringLiterals;

namespace {

TPictureRead refused(const QString &why)
{
    return {{}, why};
}

QString megabytes(qint64 bytes)
{
    return QString::number(bytes / (qint64(1024) * 1024));
}

TPictureRead tooLarge()
{
    return refused(u"حجم فایل تصویر بیش از %1 مگابایت است."_s.arg(megabytes(PictureLimits::FileBytes)));
}

TPictureRead tooManyDots()
{
    return refused(u"ابعاد تصویر بیش از اندازه بزرگ است. حداکثر %1 میلیون نقطه پذیرفته می شود."_s.arg(
        PictureLimits::Dots / 1'000'000));
}

TPictureRead broken()
{
    return refused(u"فایل تصویر خراب یا ناقص است و خوانده نشد."_s);
}

TPictureRead tooMuchWork()
{
    return refused(
        u"این فایل تصویر ساختاری غیر عادی دارد و خواندن آن بیش از اندازه طول می کشد. آن را در یک برنامه تصویر باز کنید، دوباره ذخیره کنید و فایل تازه را برگزینید."_s);
}

/// Lets a picture of so many dots be decoded while this lives: Qt's own limit is below that of the suite.
class TRoomToDecode {
public:
    explicit TRoomToDecode(qint64 dots) : m_before(QImageReader::allocationLimit())
    {
        constexpr qint64 bytesOfDot = 8; // four colours of 16 bits
        const int needed = int(dots * bytesOfDot / (qint64(1024) * 1024)) + 1;
        if (m_before != 0 && m_before < needed)
            QImageReader::setAllocationLimit(needed);
    }
    ~TRoomToDecode() { QImageReader::setAllocationLimit(m_before); }
    Q_DISABLE_COPY_MOVE(TRoomToDecode)

private:
    int m_before;
};

QSize fitting(const QSize &size)
{
    const QSize most(PictureLimits::StoredSide, PictureLimits::StoredSide);
    return size.width() <= most.width() && size.height() <= most.height()
               ? size
               : size.scaled(most, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

template <class Fill>
void writeRow(TQuery *dataset, const Fill &fill)
{
    dataset->edit();
    try {
        fill();
        dataset->post();
    } catch (...) {
        dataset->cancel();
        throw;
    }
}

bool hasRow(const TQuery *dataset)
{
    return dataset->active() && !dataset->isEmpty();
}

} // namespace

TPictureRead FitPicture(const QImage &picture)
{
    if (picture.isNull())
        return broken();
    if (qint64(picture.width()) * picture.height() > PictureLimits::Dots)
        return tooManyDots();
    const QSize size = fitting(picture.size());
    QImage fitted = size == picture.size()
                        ? picture
                        : picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (fitted.hasAlphaChannel()) {
        QImage paper(fitted.size(), QImage::Format_RGB32);
        paper.fill(Qt::white);
        QPainter(&paper).drawImage(0, 0, fitted);
        fitted = paper;
    }
    return {fitted.convertToFormat(QImage::Format_RGB32), {}};
}

TPictureRead ReadPicture(const QByteArray &bytes)
{
    if (bytes.size() > PictureLimits::FileBytes)
        return tooLarge();
    const PictureFile::TKind kind = PictureFile::kindOf(bytes);
    if (kind == PictureFile::TKind::Other)
        return refused(u"تنها تصویرهای JPEG و PNG پذیرفته می شوند."_s);
    const bool isJpeg = kind == PictureFile::TKind::Jpeg;
    const PictureFile::TJpegParts parts = isJpeg ? PictureFile::jpegParts(bytes) : PictureFile::TJpegParts();
    if (parts.segments > PictureLimits::JpegSegments || parts.scans > PictureLimits::JpegScans)
        return tooMuchWork();
    const QByteArray picture = isJpeg ? bytes : PictureFile::plainPng(bytes, PictureLimits::PngChunks);
    if (isJpeg ? !parts.whole : picture.isEmpty())
        return broken();
    TTimedBytes device(picture, PictureLimits::ReadTime);
    QImageReader reader(&device, isJpeg ? "jpeg" : "png");
    const QSize size = reader.size();
    if (!size.isValid())
        return broken();
    const qint64 dots = qint64(size.width()) * size.height();
    if (dots > PictureLimits::Dots)
        return tooManyDots();
    if (dots * parts.scans > PictureLimits::JpegScannedDots)
        return tooMuchWork();
    const TRoomToDecode room(dots);
    // A camera's picture is scaled while it is read: a twentieth of the time and of the memory.
    reader.setScaledSize(fitting(size));
    reader.setAutoTransform(true);
    const QImage read = reader.read();
    return device.ranOut() ? tooMuchWork() : FitPicture(read);
}

TPictureRead ReadPictureFile(const QString &fileName)
{
    QFile file(fileName);
    // A named pipe or a device would never end.
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly))
        return refused(u"فایل تصویر باز نشد."_s);
    if (file.size() > PictureLimits::FileBytes)
        return tooLarge();
    return ReadPicture(file.read(PictureLimits::FileBytes + 1));
}

QByteArray JpegOf(const QImage &picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(PictureLimits::JpegQuality);
    return writer.write(picture) ? bytes : QByteArray();
}

bool SaveJpegToTable(TQuery *dataset, const QString &column, const QString &fileName)
{
    if (!hasRow(dataset))
        return true;
    const TPictureRead read = ReadPictureFile(fileName);
    const QByteArray jpeg = read.image.isNull() ? QByteArray() : JpegOf(read.image);
    if (jpeg.isEmpty())
        return false;
    writeRow(dataset, [&] { dataset->setValue(column, jpeg); });
    return true;
}

void DelJpegToTable(TQuery *dataset, const QString &column)
{
    if (hasRow(dataset))
        writeRow(dataset, [&] { dataset->setValue(column, QVariant()); });
}
