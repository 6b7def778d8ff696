#pragma once

#include "app/SmallList_FRM.h"
#include "host/Declaration_PKG/CodeLocks_unt.h"
#include "host/NewBaseForms_PKG/BaseDock_UNT.h"
#include "host/database/Query.h"

/// All code locks with the workstations that hold them. An administrator can release one.
class TLockList_FRM : public TSmallList_FRM {
    Q_OBJECT
public:
    TLockList_FRM();

protected:
    QList<QStringList> ReadRows() override;

private:
    void release();
    QList<TCodeLock> m_locks;
};

/// The workstations of the database. An administrator can take one that is gone out of it, with its locks.
class TWorkstationList_FRM : public TSmallList_FRM {
    Q_OBJECT
public:
    TWorkstationList_FRM();

protected:
    QList<QStringList> ReadRows() override;

private:
    void remove();
    QList<TWorkstation> m_workstations;
};

/// The event log: who did what, when and where; searched as all lists are. Nothing in it can be changed; whether
/// somebody did so past the program is checked.
class TEventLog_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    TEventLog_FRM();

    TSmartButton_ZLM *Check_BTN = nullptr; ///< whether a line was changed or taken out

protected:
    void SetListText() override;
    TBaseGet_FRM *CreateEditor(bool) override { return nullptr; }
    void DeleteRecord() override {}
    void EditRecord() override {}
    void NewRecord() override {}

private:
    void check();
    TQuery m_query;
};
