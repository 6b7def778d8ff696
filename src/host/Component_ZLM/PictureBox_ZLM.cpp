#include "host/Component_ZLM/PictureBox_ZLM.h"

#include "host/Declaration_PKG/Picturefunctions_unt.h"

#include <QPainter>

TPictureBox_ZLM::TPictureBox_ZLM(QWidget *parent) : QFrame(parent)
{
    setFrameShape(QFrame::StyledPanel);
    setMinimumSize(90, 110);
}

void TPictureBox_ZLM::SetPicture(const QImage &picture)
{
    m_picture = picture;
    update();
}

void TPictureBox_ZLM::SetEmptyText(const QString &text)
{
    m_emptyText = text;
    update();
}

QSize TPictureBox_ZLM::sizeHint() const
{
    return {130, 160};
}

void TPictureBox_ZLM::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    const QRect inside = contentsRect();
    if (m_picture.isNull()) {
        painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
        painter.drawText(inside, Qt::AlignCenter | Qt::TextWordWrap, m_emptyText);
        return;
    }
    QRect place(QPoint(), m_picture.size().scaled(inside.size(), Qt::KeepAspectRatio));
    place.moveCenter(inside.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, m_picture);
}

void ShowPicture(const QVariant &picture, TPictureBox_ZLM *image)
{
    const QByteArray bytes = picture.toByteArray();
    image->SetPicture(bytes.isEmpty() ? QImage() : ReadPicture(bytes).image);
}
