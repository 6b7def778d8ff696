#pragma once

#include "app/DatabaseChoice.h"
#include "host/NewBaseForms_PKG/BaseForm_UNT.h"

#include <functional>

class QLabel;

/// Says that a server is waited for, what is wrong with it and how long that may take; Esc gives up.
class TServerWait : public TBaseForm {
    Q_OBJECT
public:
    explicit TServerWait(const TDatabaseChoice &choice);
    /// Waits, as TChangeOver does, until the server takes a connection, then does `work`. Throws the last failure when the
    /// time is over or the user gave up. The window comes after the first failure; while a connection is tried it stays
    /// alive.
    void Run(const std::function<void()> &work);

private:
    void knock();
    void spend(int milliseconds) const;
    QString m_place;
    QLabel *m_text;
    bool m_stopped = false;
};
