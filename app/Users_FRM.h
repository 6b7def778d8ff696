#pragma once

#include "app/SmallList_FRM.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "host/NewBaseForms_PKG/BaseEditor_UNT.h"

class QTableWidget;

/// The users of the suite: who may log in. For administrators.
class TUserList_FRM : public TSmallList_FRM {
    Q_OBJECT
public:
    TUserList_FRM();

protected:
    QList<QStringList> ReadRows() override;

private:
    void edit(int code);
    void editRights();
    void remove();
    const TUserInfo &current() const { return m_users.at(CurrentRow()); }
    QList<TUserInfo> m_users;
};

/// One user: name, password, whether the user may log in at all, and whether as an administrator.
class TUserGet_FRM : public TBaseEditor {
    Q_OBJECT
public:
    /// Code 0: a new user.
    explicit TUserGet_FRM(int code);

    TSmartEdit_ZLM *Name_EDT;
    TSmartEdit_ZLM *FullName_EDT;
    TSmartEdit_ZLM *Password_EDT;
    TSmartEdit_ZLM *Repeat_EDT;
    TSmartCheckBox_ZLM *IsAdmin_CHK;
    TSmartCheckBox_ZLM *IsActive_CHK;

protected:
    bool Validate() override;
    void ClearRecord() override;
    void LoadRecord() override;
    void ShowRecord() override;
    bool SaveRecord() override;
    void NewCode() override { SetIdentifier(0); }
    bool RecordExists() override;

private:
    TUserInfo m_user;
};

/// What a user may do with each software part, as a table of ticks: one row for each part, one column for each right.
class TUserRights_FRM : public TBaseEditor {
    Q_OBJECT
public:
    explicit TUserRights_FRM(const TUserInfo &user);
    QTableWidget *Rights_GRD;

protected:
    bool Validate() override { return true; }
    void LoadRecord() override;
    void ShowRecord() override;
    bool SaveRecord() override;
    bool RecordExists() override;
    QWidget *FirstInput() override;
    bool MayStartNew() override { return false; } ///< there is no next user here

private:
    struct TPlace {
        TRight right;
        int row;
        int column;
    };
    QList<TPlace> m_places;
    QList<TRight> m_rights;
};
