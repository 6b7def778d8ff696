#pragma once

#include "host/Declaration_PKG/Login_unt.h"
#include "host/NewBaseForms_PKG/BaseForm_UNT.h"

class QGridLayout;
class QLabel;
class QLineEdit;
class QTimer;
class TSmartButton_ZLM;

/// Whether a new password was typed the same twice; tells the user otherwise, and goes back to it.
bool repeatedRightly(QLineEdit *password, QLineEdit *repeated);

/// What the small dialogs of the start share: captions beside inputs, OK on F3 or Enter in the last input.
class TStart_FRM : public TBaseForm {
    Q_OBJECT
public:
    /// The dialog's result when the user wants another database first.
    static const int OtherDatabase = 2;
    /// Adds the button for that.
    void OfferOtherDatabase();

protected:
    TStart_FRM(const QString &title, const QString &text, const QString &okCaption);
    QLineEdit *AddLine(const QString &caption, const QString &objectName, bool secret = false);
    /// Checks and does what the dialog is for; true closes it with OK.
    virtual bool Accept() = 0;
    void EnterKey() override;
    TSmartButton_ZLM *Ok_BTN = nullptr;
    QLabel *Text_LBL = nullptr;

private:
    void press();
    QGridLayout *m_grid;
    QLineEdit *m_last = nullptr;
};

/// Asks for name and password, as often as wanted. After too many wrong ones the button waits with the user.
class TLogin_FRM : public TStart_FRM {
    Q_OBJECT
public:
    /// `user` empty: the last one of this workstation.
    explicit TLogin_FRM(const QString &user = {});
    const TUserInfo &User() const { return m_user; }

    QLineEdit *User_EDT;
    QLineEdit *Password_EDT;

protected:
    bool Accept() override;

private:
    void wait(int seconds);
    TUserInfo m_user;
    QTimer *m_timer;
    int m_secondsLeft = 0;
};

/// The first start on a database: makes its first administrator and logs in.
class TFirstUser_FRM : public TStart_FRM {
    Q_OBJECT
public:
    TFirstUser_FRM();
    const TUserInfo &User() const { return m_user; }

    QLineEdit *User_EDT;
    QLineEdit *FullName_EDT;
    QLineEdit *Password_EDT;
    QLineEdit *Repeat_EDT;

protected:
    bool Accept() override;

private:
    TUserInfo m_user;
};

/// The user changes the own password.
class TChangePassword_FRM : public TStart_FRM {
    Q_OBJECT
public:
    TChangePassword_FRM();

    QLineEdit *Old_EDT;
    QLineEdit *New_EDT;
    QLineEdit *Repeat_EDT;

protected:
    bool Accept() override;
};

/// The first start on a workstation: its number in the suite, unique in the database, and its name.
class TWorkstation_FRM : public TStart_FRM {
    Q_OBJECT
public:
    explicit TWorkstation_FRM(const QString &name);
    int ComIndex() const { return m_comIndex; }

    QLineEdit *Index_EDT;
    QLineEdit *Name_EDT;

protected:
    bool Accept() override;

private:
    int m_comIndex = 0;
};

/// Asks for the password of the database server.
class TServerPassword_FRM : public TStart_FRM {
    Q_OBJECT
public:
    explicit TServerPassword_FRM(const QString &server);

    QLineEdit *Password_EDT;

protected:
    bool Accept() override { return true; }
};
