#pragma once

#include "host/Declaration_PKG/Guarded_unt.h"
#include "host/Export.h"

#include <QDialog>
#include <QKeyEvent>
#include <QKeySequence>
#include <QVariant>

class TSmartButton_ZLM;
class QVBoxLayout;
class QHBoxLayout;
class QTabWidget;

/// What all screens of the suite share: right to left, the class name as object name, remembered place and size,
/// Enter moves to the next input as Tab does, Esc closes, function keys press the buttons.
///
/// A derived screen needs Q_OBJECT: its class name is its object name and the key of its remembered layout.
class KETEBIONPAP_HOST TBaseForm : public QDialog {
    Q_OBJECT
public:
    /// Without a parent the screen stands over the window that is active now.
    explicit TBaseForm(QWidget *parent = nullptr);
    ~TBaseForm() override;

    void SetTitle(const QString &text) { setWindowTitle(text); }
    /// Restores place and size on the first showing.
    void setVisible(bool visible) override;
    int exec() override;
    void done(int result) override;

protected:
    /// A button of the footer: object name, caption as shown, short caption, key ("F4", "Enter", "Esc" or empty).
    /// The key presses the button while it is enabled, and is listed in its tool tip.
    TSmartButton_ZLM *AddButton(const QString &objectName, const QString &caption, const QString &key,
                                const QString &shortCaption = {});
    /// Lets a key ("F11", "Ctrl+P") press a button that stands elsewhere in the screen.
    void AddKey(const QString &key, TSmartButton_ZLM *button);
    /// The area above the footer, for the screen's contents.
    QVBoxLayout *Body() const { return m_body; }
    QHBoxLayout *Footer() const { return m_footer; }
    /// Keys of the screen itself (Ctrl+1...), asked first; function keys and Ctrl with a digit reach it whatever
    /// input has the focus. True: handled.
    virtual bool HandleKey(QKeyEvent *event);
    /// Enter, when no button has it or the focus: the next input.
    virtual void EnterKey();

    /// Ctrl+1, Ctrl+2... turn to the pages (not to hidden or disabled ones), and Ctrl+Tab to the next one. An input
    /// that takes the focus back when it is left keeps its page.
    void SetPages(QTabWidget *pages) { m_pages = pages; }
    QTabWidget *Pages() const { return m_pages; }

    /// Part `index` (0-based) of a value whose parts are parted by semicolons; a value that is no text is its own
    /// part 0.
    static QVariant ValuePart(const QVariant &value, int index);

    void keyPressEvent(QKeyEvent *event) override;

private:
    class TKeyFilter;
    bool pressButton(QKeyEvent *event);
    void turnPage(int page, bool focusFollows);
    void stepPage(int step);
    void nameItself();
    QVBoxLayout *m_body;
    QHBoxLayout *m_footer;
    QTabWidget *m_pages = nullptr;
    QList<std::pair<QKeySequence, TSmartButton_ZLM *>> m_keys;
    bool m_shownBefore = false;
};
