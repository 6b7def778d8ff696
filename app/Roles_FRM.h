#pragma once

#include "app/RightsEditor_FRM.h"
#include "app/SmallList_FRM.h"
#include "host/Declaration_PKG/Login_unt.h"

/// The roles: named sets of rights. For administrators.
class TRoleList_FRM : public TSmallList_FRM {
    Q_OBJECT
public:
    TRoleList_FRM();

protected:
    QList<QStringList> ReadRows() override;

private:
    void edit(int code);
    void remove();
    QList<TRole> m_roles;
};

/// One role: its name and its rights. Those of the administrator's role are all, and stay so.
class TRoleGet_FRM : public TRightsEditor {
    Q_OBJECT
public:
    /// Code 0: a new role.
    explicit TRoleGet_FRM(int code);
    TSmartEdit_ZLM *Name_EDT;

protected:
    bool Validate() override;
    void ClearRecord() override;
    void LoadRecord() override;
    void ShowRecord() override;
    bool SaveRecord() override;
    void NewCode() override { SetIdentifier(0); }
    bool RecordExists() override;

private:
    TRole m_role;
};
