#pragma once

#include "app/Login_FRM.h"

#include <QLineEdit>

#include <functional>

/// The password of a backup that is made: typed twice, or left empty for one that is not encrypted.
class TNewSeal_FRM : public TStart_FRM {
    Q_OBJECT
public:
    TNewSeal_FRM();
    QString Password() const { return Password_EDT->text(); }

    QLineEdit *Password_EDT;
    QLineEdit *Repeat_EDT;

protected:
    bool Accept() override;
};

/// The password of an encrypted backup that is opened. Closes when `open` takes the password; otherwise the user is told
/// and types another one.
class TSeal_FRM : public TStart_FRM {
    Q_OBJECT
public:
    explicit TSeal_FRM(std::function<void(const QString &password)> open);

    QLineEdit *Password_EDT;

protected:
    bool Accept() override;

private:
    std::function<void(const QString &)> m_open;
};

/// Opens a backup, first without a password; asks for it when the backup is encrypted. False: the user gave up, or
/// was told in the dialog why it cannot be opened. Throws what `open` throws without a password.
bool TakeSealed(const std::function<void(const QString &password)> &open);
