#pragma once

#include "host/Declaration_PKG/RecordRows_unt.h"

/// The salary brackets of the tax table under edit.
class TTaxRows : public TRecordRows {
public:
    QStringList LeftCodes() override;
    int Count(const QString &code) override;
    bool AreLeft(const QString &code) override;
    void TakeUp(const QString &leftCode, const QString &newCode) override;
    void Discard(const QString &code) override;
    void DiscardAll() override;
    bool DroppedOnOpening() const override { return true; }
    bool Changed(const QString &code) override;
    void PutBack(const QString &code) override;
    void Move(const QString &from, const QString &to, bool own) override;
    bool HaveMoved(const QString &from, const QString &to) override;
    void Show(const QString &code) override;

private:
    bool m_hadRows = false; ///< there was something to move
};
