#pragma once

#include <QString>

/// The working rows of one kind of record: rows that stand under a record's code, in a table that all workstations share,
/// until the record is saved. An editor gives them to its base, which offers those that were left behind and looks after
/// those under edit. Codes as text. All functions throw TDatabaseError.
class TRecordRows {
public:
    virtual ~TRecordRows() = default;

    // Rows that an editor of this workstation left behind.
    /// How many rows were left under a code.
    virtual int Count(const QString &code) = 0;
    /// Whether rows under a code that was left are worth to be offered.
    virtual bool AreLeft(const QString &code) = 0;
    virtual void TakeUp(const QString &leftCode, const QString &newCode) = 0;
    virtual void Discard(const QString &code) = 0;
    virtual void DiscardAll() = 0;
    /// Whether opening a record drops rows under its code that nobody noted as his; others are never a new record's.
    virtual bool DroppedOnOpening() const { return false; }

    // Rows of the record under edit.
    /// Whether those that are stored are no longer those that the grid shows.
    virtual bool Changed(const QString & /*code*/) { return false; }
    /// Stores those that the grid shows in place of the stored ones.
    virtual void PutBack(const QString & /*code*/) {}
    /// A new record gets another code: its rows go with it and are shown. `own`: the stored ones; else those that the grid
    /// shows, since what stands under the old code is somebody else's.
    virtual void Move(const QString & /*from*/, const QString & /*to*/, bool /*own*/) {}
    /// Whether a move that met an error was done all the same; they are shown then.
    virtual bool HaveMoved(const QString & /*from*/, const QString & /*to*/) { return false; }
    /// Undoes what such a move may have done.
    virtual void MoveBack(const QString & /*from*/, const QString & /*to*/) {}
    virtual void Show(const QString & /*code*/) {}
};
