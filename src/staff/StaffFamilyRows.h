#pragma once

#include "host/Declaration_PKG/RecordRows_unt.h"

/// The family rows of the employee under edit.
class TStaffFamilyRows : public TRecordRows {
public:
    QStringList LeftCodes() override;
    int Count(const QString &code) override;
    bool AreLeft(const QString &code) override;
    void TakeUp(const QString &leftCode, const QString &newCode) override;
    void Discard(const QString &code) override;
    void DiscardAll() override;
    bool Changed(const QString &code) override;
    void PutBack(const QString &code) override;
    void Move(const QString &from, const QString &to, bool own) override;
    void MoveBack(const QString &from, const QString &to) override;
    void Show(const QString &code) override;
};
