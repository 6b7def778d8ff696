#include "host/BaseFrame_PKG/Pic_Get.h"

#include "host/Declaration_PKG/Picturefunctions_unt.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/database/SqliteFile.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QTemporaryFile>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

TPic_Get::TPic_Get(const QString &caption, QWidget *parent)
    : QWidget(parent), Image(new TPictureBox_ZLM(this)), PicInsert_BTN(new TSmartButton_ZLM(u"درج"_s, this)),
      PicDelete_BTN(new TSmartButton_ZLM(u"حذف"_s, this)), m_caption(caption)
{
    Image->setObjectName(u"Image"_s);
    Image->SetEmptyText(caption);
    PicInsert_BTN->setObjectName(u"PicInsert_BTN"_s);
    PicInsert_BTN->setToolTip(u"انتخاب فایل تصویر (Ins)"_s);
    PicDelete_BTN->setObjectName(u"PicDelete_BTN"_s);
    PicDelete_BTN->setToolTip(u"حذف تصویر (Del)"_s);
    setAccessibleName(caption);
    setToolTip(u"تصویر را می توان روی این قسمت کشید یا با Ctrl+V چسباند."_s);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto *title = new QLabel(caption, this);
    title->setAlignment(Qt::AlignHCenter);
    column->addWidget(title);
    column->addWidget(Image, 1);
    auto *row = new QHBoxLayout;
    for (TSmartButton_ZLM *button : {PicInsert_BTN, PicDelete_BTN}) {
        // The keys of the picture do the same: two stops fewer on the way through the inputs.
        button->setFocusPolicy(Qt::NoFocus);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        row->addWidget(button);
    }
    column->addLayout(row);
}

TPic_Get::~TPic_Get() = default;

void TPic_Get::PicInsert()
{
    QFileDialog *dialog = m_dialog ? m_dialog() : nullptr;
    if (dialog && dialog->exec() == QDialog::Accepted && !dialog->selectedFiles().isEmpty())
        TakeFile(dialog->selectedFiles().constFirst());
}

void TPic_Get::PicDelete()
{
    Clear();
}

bool TPic_Get::TakeFile(const QString &fileName)
{
    if (SqliteFile::isHeldOpen(fileName)) // the database itself: closing it again would drop its locks
        return take({}, u"تنها تصویرهای JPEG و PNG پذیرفته می شوند."_s);
    const TPictureRead read = ReadPictureFile(fileName);
    return take(read.image, read.refusal);
}

bool TPic_Get::take(const QImage &picture, const QString &refusal)
{
    QString why = refusal;
    if (!picture.isNull()) {
        auto file = std::make_unique<QTemporaryFile>(QDir::tempPath() + u"/picture-XXXXXX.jpg"_s);
        const QByteArray jpeg = JpegOf(picture);
        if (!jpeg.isEmpty() && file->open() && file->write(jpeg) == jpeg.size() && file->flush()) {
            m_file = std::move(file);
            Image->SetPicture(picture);
            return true;
        }
        why = u"تصویر در پوشه موقت نوشته نشد."_s;
    }
    ShowSmartMessage(u"تصویر پذیرفته نشد"_s, why, miWarning);
    return false;
}

bool TPic_Get::takeMime(const QMimeData *data)
{
    for (const QUrl &url : data->urls())
        if (url.isLocalFile())
            return TakeFile(url.toLocalFile());
    if (!data->hasImage())
        return false;
    const TPictureRead read = FitPicture(data->imageData().value<QImage>());
    return take(read.image, read.refusal);
}

void TPic_Get::ShowStored(const QVariant &picture)
{
    m_file.reset();
    ShowPicture(picture, Image);
}

QString TPic_Get::FileName() const
{
    return m_file ? m_file->fileName() : QString();
}

void TPic_Get::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Paste)) {
        if (takeMime(QApplication::clipboard()->mimeData()))
            Q_EMIT changed();
    } else if (event->key() == Qt::Key_Insert && event->modifiers() == Qt::NoModifier) {
        PicInsert_BTN->click();
    } else if (event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier) {
        PicDelete_BTN->click();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void TPic_Get::focusInEvent(QFocusEvent *event)
{
    QPalette palette = Image->palette();
    palette.setColor(QPalette::WindowText, palette.color(QPalette::Highlight));
    Image->setPalette(palette);
    Image->setFrameStyle(QFrame::Box | QFrame::Plain);
    Image->setLineWidth(2);
    QWidget::focusInEvent(event);
}

void TPic_Get::focusOutEvent(QFocusEvent *event)
{
    Image->setPalette(QPalette());
    Image->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    Image->setLineWidth(1);
    QWidget::focusOutEvent(event);
}

void TPic_Get::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls() || event->mimeData()->hasImage())
        event->acceptProposedAction();
}

void TPic_Get::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    if (takeMime(event->mimeData()))
        Q_EMIT changed();
}

void TPic_Get::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    QWidget::mousePressEvent(event);
}
