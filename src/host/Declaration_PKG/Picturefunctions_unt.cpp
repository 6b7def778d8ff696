#include "host/Declaration_PKG/Picturefunctions_unt.h"

#include "host/Component_ZLM/PictureBox_ZLM.h"
#include "host/database/Query.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>

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
    return refused(u"حجم فایل تصویر بیش از %1 مگابایت است."_qs.arg(megabytes(PictureLimits::FileBytes)));
}

TPictureRead tooManyDots()
{
    return refused(u"ابعاد تصویر بیش از اندازه بزرگ است. حداکثر %1 میلیون نقطه پذیرفته می شود."_qs.arg(
        PictureLimits::Dots / 1'000'000));
}

TPictureRead broken()
{
    return refused(u"فایل تصویر خراب یا ناقص است و خوانده نشد."_qs);
}

// A JPEG that was cut off would be read with a grey rest. It is whole when its end mark follows its image data; the
// small picture that a camera puts before them has an end mark of its own.
bool isWholeJpeg(const QByteArray &bytes)
{
    qsizetype at = 2;
    while (at + 4 <= bytes.size() && quint8(bytes[at]) == 0xff) {
        const quint8 mark = quint8(bytes[at + 1]);
        if (mark == 0xff) { // a fill byte
            ++at;
            continue;
        }
        const qsizetype length = quint8(bytes[at + 2]) << 8 | quint8(bytes[at + 3]);
        if (mark == 0xda)
            return bytes.indexOf(QByteArrayLiteral("\xff\xd9"), at + 2 + length) >= 0;
        at += 2 + length;
    }
    return false;
}

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
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    if (format != "jpeg" && format != "png")
        return refused(u"تنها تصویرهای JPEG و PNG پذیرفته می شوند."_qs);
    const QSize size = reader.size();
    if (!size.isValid() || (format == "jpeg" && !isWholeJpeg(bytes)))
        return broken();
    if (qint64(size.width()) * size.height() > PictureLimits::Dots)
        return tooManyDots();
    // A camera's picture is scaled while it is read: a twentieth of the time and of the memory.
    reader.setScaledSize(fitting(size));
    reader.setAutoTransform(true);
    return FitPicture(reader.read());
}

TPictureRead ReadPictureFile(const QString &fileName)
{
    QFile file(fileName);
    // A named pipe or a device would never end.
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly))
        return refused(u"فایل تصویر باز نشد."_qs);
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

void ShowPicture(const QVariant &picture, TPictureBox_ZLM *image)
{
    const QByteArray bytes = picture.toByteArray();
    image->setPicture(bytes.isEmpty() ? QImage() : ReadPicture(bytes).image);
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
