#pragma once

#include "host/Declaration_PKG/Specialmessages.h"

#include <QMessageBox>

/// A message or a question that waits for the user. Enter takes the default button, Esc the one that changes nothing,
/// and the first letter of a caption its button, with or without Alt.
class TMessageDialog : public QMessageBox {
    Q_OBJECT
public:
    static TAnswer ask(const TMessage &message, QWidget *owner);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    TMessageDialog(const TMessage &message, QWidget *owner);
    void addButtons(const TMessage &message);
    TAnswer answer() const;
};
