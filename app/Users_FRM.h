#pragma once

#include "app/RightsEditor_FRM.h"
#include "app/SmallList_FRM.h"
#include "host/Declaration_PKG/Login_unt.h"
#include "host/NewBaseForms_PKG/BaseEditor_UNT.h"

class QListWidget;

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

/// The users but one, to choose one of them.
class TUserPick_FRM : public TSmallList_FRM {
    Q_OBJECT
public:
    explicit TUserPick_FRM(int without);
    int Picked() const { return m_picked; } ///< the code; 0: none

protected:
    QList<QStringList> ReadRows() override;

private:
    int m_without;
    int m_picked = 0;
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

/// What a user may do: the roles, and beside them the own rights. F9 takes both over from another user, to be saved or not.
class TUserRights_FRM : public TRightsEditor {
    Q_OBJECT
public:
    explicit TUserRights_FRM(const TUserInfo &user);
    QListWidget *Roles_LST;

protected:
    bool Validate() override { return true; }
    void LoadRecord() override;
    void ShowRecord() override;
    bool SaveRecord() override;
    bool RecordExists() override;
    QWidget *FirstInput() override;

private:
    void show(const QList<TRight> &rights, const QList<int> &roles);
    QList<int> tickedRoles() const;
    void markRoles();
    void copyFromAnother();
    QList<TRole> m_roles;
    QList<TRight> m_rights;
    QList<int> m_ownRoles;
};
