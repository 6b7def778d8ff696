#pragma once

#include <QDialog>
#include <QKeyEvent>

class TSmartButton_ZLM;
class QVBoxLayout;
class QHBoxLayout;

/// What all screens of the suite share: right to left, the class name as object name, remembered place and size,
/// Enter moves to the next input as Tab does, Esc closes, function keys press the buttons.
class TBaseForm : public QDialog {
    Q_OBJECT
public:
    explicit TBaseForm(QWidget *parent = nullptr);
    ~TBaseForm() override;

    void SetTitle(const QString &text) { setWindowTitle(text); }

protected:
    /// A button of the footer: object name, caption as shown, short caption, key ("F4", "Enter", "Esc" or empty).
    /// The key presses the button while it is enabled, and is listed in its tool tip.
    TSmartButton_ZLM *AddButton(const QString &objectName, const QString &caption, const QString &key,
                                const QString &shortCaption = {});
    /// The area above the footer, for the screen's contents.
    QVBoxLayout *Body() const { return m_body; }
    QHBoxLayout *Footer() const { return m_footer; }
    /// Keys of the screen itself (Ctrl+1...), asked first. True: handled.
    virtual bool HandleKey(QKeyEvent *event);
    /// Called once by the screen's constructor end or first show: sets the object name to the class name and
    /// restores place and size.
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void done(int result) override;

private:
    QVBoxLayout *m_body;
    QHBoxLayout *m_footer;
    QList<std::pair<QKeySequence, TSmartButton_ZLM *>> m_keys;
    bool m_shownBefore = false;
};
