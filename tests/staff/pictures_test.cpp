#include "staff/Screens.h"

#include "host/BaseFrame_PKG/Pic_Get.h"
#include "host/Declaration_PKG/Picturefunctions_unt.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageReader>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

QImage plain(int width, int height, const QColor &color)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

class StaffPictures : public StaffScreens {
protected:
    QString file(const QString &name, const QByteArray &bytes)
    {
        const QString path = folder.filePath(name);
        QFile out(path);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
        return path;
    }
    static QByteArray encoded(const QImage &image, const char *format)
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        EXPECT_TRUE(image.save(&buffer, format));
        return bytes;
    }
    QString picture(const QString &name, const QImage &image, const char *format)
    {
        return file(name, encoded(image, format));
    }
    QByteArray stored(const QString &column, int code)
    {
        return db.connection()
            .scalar(u"select %1 from Staff where Code=%2"_s.arg(column).arg(code))
            .toByteArray();
    }
    static QByteArray formatOf(const QByteArray &bytes)
    {
        QBuffer buffer;
        buffer.setData(bytes);
        buffer.open(QIODevice::ReadOnly);
        return QImageReader::imageFormat(&buffer);
    }
    /// Chooses a file in the dialog that the key opens.
    void insert(TStaffGet_FRM &editor, TPic_Get *control, const QString &path)
    {
        control->setFocus();
        Keys::runModal(
            [&] {
                Keys::press(&editor, Qt::Key_Insert);
                return 0;
            },
            [&](QWidget *dialog) {
                EXPECT_EQ(dialog, editor.OpenPictureDialog);
                EXPECT_EQ(dialog->objectName(), "OpenPictureDialog");
                auto *name = dialog->findChild<QLineEdit *>("fileNameEdit");
                Keys::retype(name, path);
                if (QWidget *completions = QApplication::activePopupWidget())
                    completions->hide();
                Keys::press(dialog, Qt::Key_Return);
            });
    }
    QTemporaryDir folder;
};

} // namespace

TEST_F(StaffPictures, PicturesAreChosenStoredAsJpegAndShownAgain)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        fill(*editor);
        turnTo(*editor, editor->Picture_Get);
        insert(*editor, editor->Picture_Get, picture("photo.png", plain(300, 400, Qt::red), "png"));
        insert(*editor, editor->FingerPrint_Get, picture("print.jpg", plain(200, 200, Qt::blue), "jpeg"));
        EXPECT_TRUE(editor->Picture_Get->HasFile());
        EXPECT_FALSE(editor->Picture_Get->IsEmpty());
        editor->activateWindow();
        EXPECT_TRUE(Keys::waitFor([&] { return editor->isActiveWindow(); }));
        editor->Picture_Get->setFocus();
        Keys::picture(editor.get(), "staff_pictures");
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList(savedMessage));
    EXPECT_EQ(formatOf(stored("Picture", 1)), "jpeg");
    EXPECT_EQ(QImage::fromData(stored("Picture", 1)).size(), QSize(300, 400));
    EXPECT_EQ(QImage::fromData(stored("FingerPrint", 1)).size(), QSize(200, 200));
    EXPECT_GT(QImage::fromData(stored("Picture", 1)).pixelColor(10, 10).red(), 240);

    const QByteArray before = stored("Picture", 1);
    const auto again = editorOf(1);
    open(*again, [&] {
        EXPECT_FALSE(again->Picture_Get->IsEmpty());
        EXPECT_FALSE(again->Picture_Get->HasFile());
        again->FingerPrint_Get->setFocus();
        press(*again, Qt::Key_Delete);
        EXPECT_TRUE(again->FingerPrint_Get->IsEmpty());
        EXPECT_FALSE(again->IsSaved());
        press(*again, Qt::Key_F3);
    });
    EXPECT_EQ(stored("Picture", 1), before); // one that was not touched is left as it was
    EXPECT_TRUE(stored("FingerPrint", 1).isEmpty());
}

TEST_F(StaffPictures, TheButtonsMarkTheEmployeeAsChangedEvenWhenTheDialogIsLeft)
{
    const auto editor = newEditor();
    messages.answer({No});
    open(*editor, [&] {
        EXPECT_TRUE(editor->IsSaved());
        Keys::runModal(
            [&] {
                QTest::mouseClick(editor->Picture_Get->PicInsert_BTN, Qt::LeftButton);
                return 0;
            },
            [&](QWidget *dialog) { Keys::press(dialog, Qt::Key_Escape); });
        EXPECT_TRUE(editor->Picture_Get->IsEmpty());
        EXPECT_FALSE(editor->IsSaved());
        press(*editor, Qt::Key_Escape);
    });
}

TEST_F(StaffPictures, AChosenPictureIsKeptPrivatelyWhenItsFileGoes)
{
    const QString path = picture("photo.jpg", plain(2000, 1000, Qt::green), "jpeg");
    const auto editor = newEditor();
    QString kept;
    open(*editor, [&] {
        fill(*editor);
        EXPECT_TRUE(editor->Picture_Get->TakeFile(path));
        kept = editor->Picture_Get->FileName();
        EXPECT_NE(kept, path);
        EXPECT_EQ(QFile::permissions(kept) &
                      (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
                  QFile::Permissions());
        EXPECT_TRUE(QFile::remove(path));
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(QImage::fromData(stored("Picture", 1)).size(),
              QSize(800, 400)); // scaled down, proportions kept
    EXPECT_LT(stored("Picture", 1).size(), 300 * 1024);
    editorOf(1); // the control goes with its screen
}

TEST_F(StaffPictures, APictureIsPastedAndDropped)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        QApplication::clipboard()->setImage(plain(50, 60, Qt::yellow));
        editor->Picture_Get->setFocus();
        press(*editor, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(editor->Picture_Get->Image->Picture().size(), QSize(50, 60));
        EXPECT_FALSE(editor->IsSaved());
        editor->SetIsSaved(true);

        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(picture("dropped.png", plain(70, 80, Qt::cyan), "png"))});
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(editor->FingerPrint_Get, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(editor->FingerPrint_Get, &drop);
        EXPECT_EQ(editor->FingerPrint_Get->Image->Picture().size(), QSize(70, 80));
        EXPECT_FALSE(editor->IsSaved());
        editor->SetIsSaved(true);

        QApplication::clipboard()->setText("no picture");
        editor->Picture_Get->setFocus();
        press(*editor, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(editor->Picture_Get->Image->Picture().size(), QSize(50, 60));
        EXPECT_TRUE(editor->IsSaved());
    });
}

TEST_F(StaffPictures, TransparentPartsTurnWhite)
{
    QImage image(10, 10, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    const TPictureRead read = ReadPicture(encoded(image, "png"));
    EXPECT_EQ(read.image.pixelColor(5, 5), QColor(Qt::white));
}

TEST_F(StaffPictures, BrokenHugeAndStrangeFilesAreRefusedWithAMessage)
{
    const QByteArray jpeg = encoded(plain(400, 400, Qt::red), "jpeg");
    const QByteArray png = encoded(plain(400, 400, Qt::red), "png");
    QByteArray hugePng = png; // claims to be 60,000 dots wide and high
    hugePng.replace(16, 8, QByteArray::fromHex("0000ea600000ea60"));
    const QList<std::pair<QString, QByteArray>> files = {
        {"empty.jpg", {}},
        {"text.jpg", "hello"},
        {"bitmap.jpg", encoded(plain(4, 4, Qt::red), "bmp")},
        {"cut.jpg", jpeg.left(jpeg.size() / 2)},
        {"cut.png", png.left(png.size() / 2)},
        {"huge.png", hugePng},
        {"large.jpg", jpeg + QByteArray(21 * 1024 * 1024, '\0')},
    };
    const auto editor = newEditor();
    open(*editor, [&] {
        for (const auto &[name, bytes] : files) {
            EXPECT_FALSE(editor->Picture_Get->TakeFile(file(name, bytes))) << name.toStdString();
            const QStringList told = messages.take();
            ASSERT_EQ(told.size(), 1) << name.toStdString();
            EXPECT_TRUE(told[0].startsWith(u"ShowSmartMessage(تصویر پذیرفته نشد|"_s))
                << told[0].toStdString();
            EXPECT_TRUE(editor->Picture_Get->IsEmpty()) << name.toStdString();
            EXPECT_FALSE(editor->Picture_Get->HasFile()) << name.toStdString();
        }
        EXPECT_FALSE(editor->Picture_Get->TakeFile(folder.path()));
        EXPECT_FALSE(editor->Picture_Get->TakeFile(folder.filePath("none.jpg")));
    });
}

// A picture that a camera wrote has a small one with an end mark of its own in front.
TEST_F(StaffPictures, ACutPictureIsSeenBehindTheCamerasSmallOne)
{
    const QByteArray jpeg = encoded(plain(400, 400, Qt::red), "jpeg");
    const QByteArray small = encoded(plain(8, 8, Qt::red), "jpeg");
    QByteArray camera = jpeg.left(2);
    const int length = int(small.size()) + 2;
    camera += QByteArray("\xff\xe2", 2) + char(length >> 8) + char(length & 0xff) + small + jpeg.mid(2);
    EXPECT_FALSE(ReadPicture(camera).image.isNull());
    const TPictureRead cut = ReadPicture(camera.left(camera.size() - jpeg.size() / 2));
    EXPECT_TRUE(cut.image.isNull());
    EXPECT_FALSE(cut.refusal.isEmpty());
}

TEST_F(StaffPictures, ARefusedPictureLeavesTheOneBefore)
{
    const auto editor = newEditor();
    open(*editor, [&] {
        EXPECT_TRUE(editor->Picture_Get->TakeFile(picture("a.png", plain(30, 30, Qt::red), "png")));
        EXPECT_FALSE(editor->Picture_Get->TakeFile(file("b.png", "broken")));
        EXPECT_EQ(editor->Picture_Get->Image->Picture().size(), QSize(30, 30));
        EXPECT_TRUE(editor->Picture_Get->HasFile());
    });
}

TEST_F(StaffPictures, AStoredPictureThatIsBrokenIsShownAsNone)
{
    add(5, "five", "five");
    setPicture(5, QByteArray("\x01\x02"));
    const auto editor = editorOf(5);
    open(*editor, [&] { EXPECT_TRUE(editor->Picture_Get->IsEmpty()); });
}

TEST_F(StaffPictures, SavingWithoutARowDoesNothing)
{
    Staff_DM->FillDataStaff(99);
    EXPECT_TRUE(
        SaveJpegToTable(Staff_DM->StaffGet_QUR, "Picture", picture("a.png", plain(3, 3, Qt::red), "png")));
    DelJpegToTable(Staff_DM->StaffGet_QUR, "Picture");
    add(5, "five", "five");
    Staff_DM->FillDataStaff(5);
    EXPECT_FALSE(SaveJpegToTable(Staff_DM->StaffGet_QUR, "Picture", file("b.png", "broken")));
}
