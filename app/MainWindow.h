#pragma once

#include "app/Session.h"

#include <QMainWindow>

#include <functional>

class QGridLayout;
class QLabel;
class QPushButton;

/// The program's window: the entry points as menus and as large buttons with their keys, each shown only to users
/// who may open it; administration for administrators; who, where and when in the status bar.
///
/// Arrows walk over the buttons, F10 goes to the menus.
class TMain_FRM : public QMainWindow {
    Q_OBJECT
public:
    explicit TMain_FRM(TSession &session);

    /// Runs an entry point as its button does, and shows what a Select_ entry returned.
    void OpenEntry(const TEntryPoint &entry);
    /// Builds menus and buttons for the user who is logged in now.
    void Rebuild();

Q_SIGNALS:
    void logOutWanted(); ///< another user wants to work
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// What the user may open at a moment.
    struct TDoors {
        bool administration = false;
        bool active = false; ///< false: the account is shut out or gone
        QList<int> parts;
        bool operator==(const TDoors &) const = default;
    };
    static TDoors doorsNow(); ///< throws TDatabaseError
    void follow();            ///< builds menus and buttons anew when what the user may open has changed
    /// An item for administrators, who are asked at the deed.
    QAction *addDoor(QMenu *menu, const QString &caption, const char *name, std::function<void()> action);
    void buildMenus();
    void buildButtons();
    void buildStatus();
    void addEntries(QMenu *menu, bool select);
    QAction *addItem(QMenu *menu, const QString &caption, const char *name, const QString &key,
                     std::function<void()> action);
    void moveFocus(QPushButton *from, int rows, int columns);
    void showStatus();
    void databaseSettings();
    void backUp();
    void restore();
    void about();

    TSession &m_session;
    TDoors m_doors;
    QList<QPushButton *> m_buttons;
    QLabel *m_user;
    QLabel *m_workstation;
    QLabel *m_database;
    QLabel *m_line; ///< which server, and how the line to it is kept
    QLabel *m_date;
};
