#pragma once

#include "app/DatabaseChoice.h"
#include "host/NewBaseForms_PKG/BaseForm_UNT.h"

class QLabel;
class QLineEdit;
class QRadioButton;
class QWidget;
class TSmartButton_ZLM;
class TSmartComboBox_ZLM;

/// Which database the program works on: a file on this machine, or SQL Server. With a test of the connection that
/// changes nothing.
class TDatabaseSettings_FRM : public TBaseForm {
    Q_OBJECT
public:
    explicit TDatabaseSettings_FRM(const TDatabaseChoice &choice);
    /// What the inputs say; with the password where one was typed.
    TDatabaseChoice Choice() const;

    QRadioButton *File_RB;
    QRadioButton *Server_RB;
    QLineEdit *File_EDT;
    QLineEdit *Driver_EDT;
    TSmartComboBox_ZLM *Privacy_CB;
    QLineEdit *Authorities_EDT;
    QLineEdit *Partner_EDT;
    QLineEdit *Server_EDT;
    QLineEdit *Port_EDT;
    QLineEdit *Database_EDT;
    QLineEdit *User_EDT;
    QLineEdit *Password_EDT;

private:
    bool isComplete();
    void test();
    void save();
    void pickFile();
    void showKind();
    void showPrivacy();
    QWidget *m_fileBox;
    QWidget *m_serverBox;
    QLabel *m_privacyHint;
    bool m_encryptsStrictly = false; ///< the vendor's stricter kind of encryption was given
    QString m_otherParts;            ///< parts of a given connection string that have no input here
};
