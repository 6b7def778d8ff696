#pragma once

#include "host/Export.h"

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QVariant>

class TQuery;

/// What pictures may be on their way in, and how large they are stored.
namespace PictureLimits {
constexpr qint64 FileBytes = qint64(20) * 1024 * 1024;
constexpr qint64 Dots = 50'000'000;
constexpr int JpegScans = 100;
constexpr qint64 JpegScannedDots = 1'000'000'000; ///< dots times scans: each scan goes through all of them
constexpr int JpegSegments = 1000;
constexpr int PngChunks = 50'000;
constexpr int ReadTime = 8000;  ///< milliseconds of the thread's own work
constexpr int StoredSide = 800; ///< dots; a larger picture is scaled down to it
constexpr int JpegQuality = 85; ///< percent
} // namespace PictureLimits

/// A picture that was read, or why it was not.
struct TPictureRead {
    QImage image;
    QString refusal; ///< one Persian sentence; empty when the image is there
};

/// Reads a JPEG or PNG file, whatever its name ends with: turned as its camera says, scaled down to the stored size,
/// on white where it is transparent. Files that are too large, cut off or of another kind are refused, and so are those
/// that would keep the window waiting out of all proportion to their size.
KETEBIONPAP_CORE TPictureRead ReadPictureFile(const QString &fileName);
/// The same from memory.
KETEBIONPAP_CORE TPictureRead ReadPicture(const QByteArray &bytes);
/// The same for a picture that is a picture already (from the clipboard).
KETEBIONPAP_CORE TPictureRead FitPicture(const QImage &picture);
/// A picture as it is stored: JPEG, without what a camera wrote beside it (place, owner).
KETEBIONPAP_CORE QByteArray JpegOf(const QImage &picture);

/// Stores a picture file in a column of the dataset's current row, as JPEG, and posts the row. False: the file is no
/// picture, nothing was written; true without effect when there is no row. Throws TDatabaseError.
KETEBIONPAP_CORE bool SaveJpegToTable(TQuery *dataset, const QString &column, const QString &fileName);
/// Clears the column in the dataset's current row and posts the row. Throws TDatabaseError.
KETEBIONPAP_CORE void DelJpegToTable(TQuery *dataset, const QString &column);
