#include "host/Declaration_PKG/PictureFile_unt.h"
#include "host/Declaration_PKG/Picturefunctions_unt.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QImageWriter>
#include <QPainter>
#include <QtEndian>

#include <gtest/gtest.h>

#include <array>

using namespace Qt::Literals::StringLiterals;

// Files that are small and take long, or that are large and sound.

namespace {

QByteArray encoded(const QImage &picture, const char *format, bool progressive = false)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(progressive);
    EXPECT_TRUE(writer.write(picture));
    return bytes;
}

QImage plain(int width, int height, QImage::Format format = QImage::Format_RGB32)
{
    QImage picture(width, height, format);
    picture.fill(QColor(120, 60, 200));
    return picture;
}

/// A JPEG whose last scan comes again and again.
QByteArray manyScans(int side, int scans)
{
    QByteArray bytes = encoded(plain(side, side), "jpeg", true);
    const qsizetype last = bytes.lastIndexOf("\xff\xda");
    const QByteArray scan = bytes.mid(last).chopped(2); // without the end mark
    bytes.chop(2);
    for (int more = PictureFile::jpegParts(bytes).scans; more < scans; ++more)
        bytes += scan;
    return bytes + "\xff\xd9";
}

/// A JPEG with so many notes before its picture.
QByteArray manyNotes(int notes)
{
    const QByteArray jpeg = encoded(plain(8, 8), "jpeg");
    QByteArray bytes = jpeg.left(2);
    for (int i = 0; i < notes; ++i)
        bytes += QByteArray("\xff\xe1\x00\x02", 4);
    return bytes + jpeg.mid(2);
}

quint32 checkSum(const QByteArray &bytes)
{
    quint32 sum = 0xffffffff;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum & 1 ? 0xedb88320 ^ (sum >> 1) : sum >> 1;
    }
    return ~sum;
}

QByteArray chunk(const QByteArray &name, const QByteArray &content)
{
    std::array<char, 4> number{};
    qToBigEndian(quint32(content.size()), number.data());
    QByteArray bytes = QByteArray(number.data(), 4) + name + content;
    qToBigEndian(checkSum(name + content), number.data());
    return bytes + QByteArray(number.data(), 4);
}

/// A PNG with chunks behind its head.
QByteArray withChunks(const QByteArray &chunks, const QImage &picture = plain(8, 8))
{
    const QByteArray png = encoded(picture, "png");
    const qsizetype head = 8 + 12 + 13;
    return png.left(head) + chunks + png.mid(head);
}

QByteArray packed(qsizetype size)
{
    return qCompress(QByteArray(size, ' '), 9).mid(4); // without Qt's own length
}

TPictureRead timed(const QByteArray &bytes, int milliseconds)
{
    QElapsedTimer watch;
    watch.start();
    TPictureRead read = ReadPicture(bytes);
    EXPECT_LT(watch.elapsed(), milliseconds);
    return read;
}

void expectRefused(const TPictureRead &read)
{
    EXPECT_TRUE(read.image.isNull());
    EXPECT_TRUE(read.refusal.contains(u"بیش از اندازه طول می کشد"_s)) << read.refusal.toStdString();
}

} // namespace

TEST(HostilePictures, AJpegOfFiveHundredScansIsRefusedBeforeItIsDecoded)
{
    const QByteArray bytes = manyScans(7000, 500);
    EXPECT_LT(bytes.size(), 1024 * 1024);
    expectRefused(timed(bytes, 1000));
}

TEST(HostilePictures, ScansCountByTheDotsThatTheyGoThrough)
{
    expectRefused(timed(manyScans(6000, 60), 1000));
    EXPECT_FALSE(ReadPicture(manyScans(400, 60)).image.isNull());
}

TEST(HostilePictures, AnOrdinaryProgressiveJpegOfACameraIsRead)
{
    const TPictureRead read = ReadPicture(encoded(plain(6000, 4000), "jpeg", true));
    EXPECT_EQ(read.image.size(), QSize(800, 533)) << read.refusal.toStdString();
}

TEST(HostilePictures, AJpegOfAMillionNotesIsRefused)
{
    expectRefused(timed(manyNotes(1'000'000), 2000));
    EXPECT_FALSE(ReadPicture(manyNotes(200)).image.isNull());
}

TEST(HostilePictures, PackedTextsAndProfilesOfAPngAreNotUnpacked)
{
    const QByteArray bomb = packed(qsizetype(200) * 1024 * 1024);
    const QByteArray comment("Comment\0\0", 9);
    const QByteArray international("Comment\0\1\0\0\0", 12);
    for (const QByteArray &one : {chunk("zTXt", comment + bomb), chunk("iTXt", international + bomb),
                                  chunk("iCCP", comment + bomb)}) {
        QByteArray chunks;
        for (int i = 0; i < 20; ++i)
            chunks += one;
        const TPictureRead read = timed(withChunks(chunks), 1000);
        EXPECT_EQ(read.image.size(), QSize(8, 8))
            << one.mid(4, 4).toStdString() << read.refusal.toStdString();
    }
}

TEST(HostilePictures, APngOfCountlessChunksIsRefused)
{
    QByteArray chunks;
    for (int i = 0; i < 200'000; ++i)
        chunks += chunk("tEXt", "a");
    EXPECT_FALSE(timed(withChunks(chunks), 1000).refusal.isEmpty());
}

TEST(HostilePictures, AChunkThatNamesMoreThanThereIsIsBroken)
{
    QByteArray png = encoded(plain(8, 8), "png");
    png.replace(8 + 12 + 13, 4, QByteArray::fromHex("fffffff0"));
    EXPECT_FALSE(ReadPicture(png).refusal.isEmpty());
}

TEST(HostilePictures, TransparentDotsOfAPaletteStayWhite)
{
    QImage picture = plain(8, 8, QImage::Format_ARGB32).convertToFormat(QImage::Format_Indexed8);
    picture.setColor(picture.pixelIndex(0, 0), qRgba(0, 0, 0, 0));
    const TPictureRead read = ReadPicture(withChunks(chunk("tEXt", QByteArray("a\0b", 3)), picture));
    EXPECT_EQ(read.image.pixelColor(0, 0), QColor(Qt::white)) << "tRNS belongs to the picture";
}

TEST(HostilePictures, SoundPicturesOf49MillionDotsAreRead)
{
    // Grey ones and those of 16 bits are not scaled while they are read.
    for (const auto &[kind, format] : {std::pair("jpeg", QImage::Format_RGB32),
                                       {"png", QImage::Format_Grayscale8},
                                       {"png", QImage::Format_RGBA64}}) {
        const TPictureRead read = ReadPicture(encoded(plain(7000, 7000, format), kind));
        EXPECT_EQ(read.image.size(), QSize(800, 800))
            << kind << ' ' << int(format) << ' ' << read.refusal.toStdString();
    }
}

TEST(HostilePictures, BytesStopComingWhenTheTimeIsOver)
{
    TTimedBytes bytes(QByteArray(1 << 20, 'x'), 20);
    EXPECT_EQ(bytes.read(10).size(), 10);
    EXPECT_FALSE(bytes.ranOut());
    QElapsedTimer watch;
    watch.start();
    double work = 1;
    while (!bytes.ranOut() && watch.elapsed() < 20000) {
        for (int i = 0; i < 1000; ++i)
            work = work * 1.0001 + i;
        bytes.seek(0);
        bytes.read(1);
    }
    EXPECT_TRUE(bytes.ranOut()) << work;
    EXPECT_EQ(bytes.read(10).size(), 0);
}
