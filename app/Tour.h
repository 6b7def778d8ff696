#pragma once

#include "app/Session.h"
#include "app/TourScript.h"

#include <QDir>

#include <functional>

class QPixmap;
class QTextStream;
class QWidget;
class TMain_FRM;

/// The guided tour: opens every entry on sample data, does its typical request by the keys that a user would press, and
/// leaves a picture of every screen. Says in a line what it does; nobody is asked anything.
class TTour {
public:
    TTour(TSession &session, const QString &folder, QTextStream &out);
    /// False when a screen did not come up or a picture could not be written.
    bool run();

private:
    struct TMessages;
    bool visit(const QString &name, const QList<TTourStep> &steps, const std::function<void()> &open);
    void startDialogs();
    void menus(TMain_FRM &window);
    void picture(QWidget *window, const QString &name);
    void save(const QPixmap &picture, const QString &name, const QString &screen);
    void say(const QString &text);

    TSession &m_session;
    QDir m_folder;
    QTextStream &m_out;
    TMessages *m_messages = nullptr;
    bool m_sound = true;
};
