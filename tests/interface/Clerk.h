#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

/// Sees every screen come up, and answers it as soon as it is at work.
class TClerk : public QObject {
public:
    enum Answer { Escapes, ClosesTheBox, Chooses };

    TClerk() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *screen = event->type() == QEvent::Show ? qobject_cast<QDialog *>(watched) : nullptr;
        if (screen) {
            shown = screen->metaObject()->className();
            QTimer::singleShot(0, screen, [this, screen] { work(screen); });
        }
        return false;
    }
    Answer answer = Escapes;
    QByteArray shown;

private:
    void work(QDialog *screen) const
    {
        auto *select = screen->findChild<QAbstractButton *>(u"Select_BTN"_s);
        if (answer == Chooses && select && select->isEnabled())
            select->click();
        else if (answer == ClosesTheBox)
            screen->close();
        else
            QTest::sendKeyEvent(QTest::Click, screen, Qt::Key_Escape, QString(), Qt::NoModifier);
    }
};
