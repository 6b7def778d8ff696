#pragma once

#include "host/Export.h"

#include <QLabel>

class QKeyEvent;
class QLineEdit;

/// A line beside the input of a password, which cannot be read while it is typed: tells that Caps Lock is on and that the
/// keyboard is the Persian one, as the keys themselves show it. Hidden as long as there is nothing to tell. It gives the
/// input its tool tip, too: letters count as they are typed.
class KETEBIONPAP_HOST TPasswordHint_ZLM : public QLabel {
    Q_OBJECT
public:
    TPasswordHint_ZLM(QLineEdit *input, QWidget *parent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void keyPressed(const QKeyEvent *event);
    void showState();
    QLineEdit *m_input;
    bool m_capsLock = false;
    bool m_persian = false;
};
