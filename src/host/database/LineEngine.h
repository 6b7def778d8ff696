#pragma once

#include "host/database/Engine.h"

/// A database behind a line. It works in a thread of its own (TServerEngine), which alone calls it; what other threads
/// may call says so.
class KETEBIONPAP_CORE TLineEngine : public TEngine {
public:
    /// Opens the line and looks whether the server fits.
    virtual void open() = 0;

    /// Before the work for one request: what was given up before is over. Whether the work may open a line that is lost.
    virtual void beginWork(bool mayConnect) = 0;
    /// Runs selects with one request and answers the rows of each.
    virtual QList<TReadRows> selectMany(const QList<TBoundStatement> &statements);

    /// From any thread: the statement that runs is to end, and no further one of this work begins; what it began is
    /// rolled back. Fails with TFault::GivenUp.
    virtual void giveUp() = 0;
    /// From any thread: nobody waits for this engine any more; it sends nothing from here on.
    virtual void abandon() = 0;
    /// From any thread, once abandoned: an engine for the same place, not open yet. It knows of the rows that this one
    /// may have stored or not.
    virtual std::unique_ptr<TLineEngine> successor() = 0;
    /// From any thread: what it is doing, in the user's words; empty for a plain request.
    virtual QString doing() const { return {}; }
};
