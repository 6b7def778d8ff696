#pragma once

#include "host/Export.h"

#include <QFrame>
#include <QImage>
#include <QVariant>

/// A framed picture, scaled into its frame with its proportions kept; empty where there is none.
class KETEBIONPAP_HOST TPictureBox_ZLM : public QFrame {
    Q_OBJECT
public:
    explicit TPictureBox_ZLM(QWidget *parent = nullptr);
    void SetPicture(const QImage &picture);
    const QImage &Picture() const { return m_picture; }
    bool IsEmpty() const { return m_picture.isNull(); }
    /// What stands in an empty frame.
    void SetEmptyText(const QString &text);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QImage m_picture;
    QString m_emptyText;
};

/// Shows a stored picture; nothing, or something that is no picture, empties the image.
KETEBIONPAP_HOST void ShowPicture(const QVariant &picture, TPictureBox_ZLM *image);
