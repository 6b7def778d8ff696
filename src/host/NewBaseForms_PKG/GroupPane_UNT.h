#pragma once

#include "host/Export.h"

#include <QWidget>

class QAction;
class QKeyEvent;
class QMenu;
class TQuery;
class TSmartButton_ZLM;
class TSmartEdit_ZLM;
class TSmartGrid_ZLM;

/// The groups beside a list: a button (F11), a search box that moves to the first group whose name begins with the
/// typed text (Ctrl+F11), the groups and their menu. What the button and the menu do is the screen's.
class KETEBIONPAP_HOST TGroup_Pane : public QWidget {
    Q_OBJECT
public:
    TGroup_Pane(TQuery *groups, const QString &gridName, const QString &columnCaption,
                const QString &buttonCaption, QWidget *parent);

    TSmartButton_ZLM *Group_BTN;
    TSmartEdit_ZLM *SearchGroup_EDT;
    TSmartGrid_ZLM *Grid;
    QMenu *GroupList_PUM;
    QAction *GNew_PMI;
    QAction *GEdit_PMI;
    QAction *GDelete_PMI;

    /// Code of the current group, 0 when there is none.
    int CurrentCode() const;
    /// Reads the groups anew and stays on the current one where it is still there, or goes to the last one.
    void Reread(bool toLast);
    /// F11 and Ctrl+F11. True: handled.
    bool HandleKey(QKeyEvent *event);
    /// The search box's hint, "جستجو ... (Ctrl + F11)", in grey while the box is empty and elsewhere.
    static QString Hint();

Q_SIGNALS:
    void groupMoved(); ///< another group is the current one; while the list of groups is open

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showHint(bool on);
    void search();
    TQuery *m_groups;
    bool m_hint = false;
    bool m_rereading = false;
};
