#pragma once

#include "host/database/Field.h"

#include <QString>

#include <sys/types.h>

/// The programs that want to write into one embedded database, in the order of their coming.
///
/// SQLite has no such order: whoever looks in the right moment gets the file, and one of many busy workstations may
/// look in vain for long. Each writer holds a ticket: a lock on one byte of a file beside the database, one above the
/// last byte that is held, until its transaction ends. The kernel frees the ticket of a program that is killed. Where
/// nobody waits no ticket is needed: who comes while the file is being written takes the first one. The queue is a
/// courtesy: what keeps two writers apart is SQLite's own lock, so that a program without the queue does no
/// harm, and where the file cannot be made (a folder that is read only) there is none.
class TWriterQueue {
public:
    /// `patience` as setPatience.
    explicit TWriterQueue(const QString &databaseFile, int patience = usualPatience);
    ~TWriterQueue();
    TWriterQueue(const TWriterQueue &) = delete;
    TWriterQueue &operator=(const TWriterQueue &) = delete;

    /// How long none ahead needs to finish until enter() gives up, in milliseconds; six times as long in all.
    void setPatience(int milliseconds) { m_patience = milliseconds; }
    /// Waits for this writer's turn. False: it gave up. Does nothing for who is in the queue already.
    bool enter();
    /// Whether nobody waits. Who finds it so may try the database at once, and needs a ticket only where it is taken.
    bool isEmpty();
    /// Gives the turn to the next one; throws nothing.
    void leave();

    static QString fileOf(const QString &databaseFile);

private:
    bool open();
    bool takeTicket();
    off_t highestTicket() const;
    int heldBetween(off_t first, off_t end) const;

    QString m_databaseFile;
    int m_patience;
    int m_file = -1;
    bool m_tried = false;
    off_t m_ticket = -1;
};
