#pragma once

#include "host/Export.h"

#include <QWidget>

class QKeyEvent;
class QStackedWidget;
class QTabBar;

/// Tabs above a list, each a narrowing of its own that the screen knows (all, employed, left) or a page with a
/// search frame. Ctrl+1, Ctrl+2... choose one.
class KETEBIONPAP_HOST TTab_Search_Frame : public QWidget {
    Q_OBJECT
public:
    explicit TTab_Search_Frame(QWidget *parent);
    /// Adds a tab; the frame's page is shown while its tab is the current one, and only then has its say.
    void AddTab(const QString &caption, QWidget *page = nullptr);
    /// Tabs without pages, the first one chosen. No signal.
    void init(const QStringList &captions);
    int CurrentTab() const;
    void SetCurrentTab(int tab);
    /// Ctrl+1 to Ctrl+9. True: a tab of this frame was meant.
    bool HandleKey(QKeyEvent *event);

Q_SIGNALS:
    void tabChanged(int tab); ///< the pages have set their conditions; run the search

private:
    void turn(int tab);
    QTabBar *m_tabs;
    QStackedWidget *m_pages;
};
