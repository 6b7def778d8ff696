#pragma once

#include <QFrame>
#include <QImage>
#include <QVariant>

/// A framed picture, scaled into its frame with its proportions kept; empty where there is none.
class TPictureBox_ZLM : public QFrame {
    Q_OBJECT
public:
    explicit TPictureBox_ZLM(QWidget *parent = nullptr);
    void setPicture(const QImage &picture);
    const QImage &picture() const { return m_picture; }
    bool isEmpty() const { return m_picture.isNull(); }
    /// What stands in an empty frame.
    void setEmptyText(const QString &text);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QImage m_picture;
    QString m_emptyText;
};

/// Shows a stored picture; nothing, or something that is no picture, empties the image.
void ShowPicture(const QVariant &picture, TPictureBox_ZLM *image);
