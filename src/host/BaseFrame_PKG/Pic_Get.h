#pragma once

#include "host/Component_ZLM/PictureBox_ZLM.h"
#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Export.h"

#include <QVariant>

#include <functional>
#include <memory>

class QFileDialog;
class QMimeData;
class QTemporaryFile;

/// A picture of a record under edit: chosen from a file, dropped on the control, or pasted (Ctrl+V); deleted (Del).
///
/// A chosen picture is read, checked and scaled at once, and kept until the save in a file of its own that only the
/// user can read: the file it came from may be gone by then. A refused one is told to the user and changes nothing.
class KETEBIONPAP_HOST TPic_Get : public QWidget {
    Q_OBJECT
public:
    TPic_Get(const QString &caption, QWidget *parent);
    ~TPic_Get() override;

    TPictureBox_ZLM *Image;
    TSmartButton_ZLM *PicInsert_BTN;
    TSmartButton_ZLM *PicDelete_BTN;

    /// Where PicInsert gets the dialog that asks for a file; the form's, it may serve several controls. It is asked
    /// for when it is needed: making one takes longer than opening a screen.
    void SetDialog(std::function<QFileDialog *()> dialog) { m_dialog = std::move(dialog); }
    /// Asks for a file and takes its picture.
    void PicInsert();
    void PicDelete();
    bool TakeFile(const QString &fileName);

    /// Shows what the record has stored; nothing is chosen then.
    void ShowStored(const QVariant &picture);
    void Clear() { ShowStored({}); }
    /// Whether a file was chosen since the record was shown.
    bool HasFile() const { return m_file != nullptr; }
    /// The chosen picture's file; empty when none was chosen.
    QString FileName() const;
    bool IsEmpty() const { return Image->IsEmpty(); }

Q_SIGNALS:
    void changed(); ///< by drop or paste; the buttons' clicks are the screen's

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    bool take(const QImage &picture, const QString &refusal);
    bool takeMime(const QMimeData *data);
    std::function<QFileDialog *()> m_dialog;
    std::unique_ptr<QTemporaryFile> m_file;
    QString m_caption;
};
