#pragma once

#include "host/Export.h"

#include <QWidget>

class QTimer;
class TZelmoSearchManager;

/// What the search frames share: a manager, a short wait while the user is typing, and the page of a tab that is not
/// shown having no say.
class KETEBIONPAP_HOST TSearch_Frame : public QWidget {
    Q_OBJECT
public:
    /// A frame that stands on a tab which is not shown sets no condition.
    void SetActive(bool active);
    bool IsActive() const { return m_active; }
    TZelmoSearchManager *Manager() const { return m_manager; }

Q_SIGNALS:
    void searchChanged(); ///< the condition is set in the manager; run the search

protected:
    explicit TSearch_Frame(QWidget *parent);
    /// Sets or removes the frame's condition in the manager. False: nothing to search for yet, leave the list.
    virtual bool SetConditions(bool active) = 0;
    void SetManager(TZelmoSearchManager *manager);
    /// The input changed: the search runs 80 ms after the last change...
    void ChangedSoon();
    /// ...or at once. A change that waits is run.
    void ChangedNow();

private:
    TZelmoSearchManager *m_manager = nullptr;
    QTimer *m_wait;
    bool m_active = true;
};
