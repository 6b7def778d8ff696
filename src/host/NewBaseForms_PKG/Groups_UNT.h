#pragma once

#include "host/Export.h"
#include "host/NewBaseForms_PKG/BaseDock_UNT.h"
#include "host/NewBaseForms_PKG/RecordGet.h"
#include "host/database/Query.h"

/// The groups of one part: employees, earnings, deductions, persons.
struct TGroupKind {
    TSoftwarePart part; ///< in rights, event log and code locks
    QString table;      ///< columns Code and Name
    QString listTitle;
    QString editorTitle;
};
/// The kind for a part's groups, also by the part that is grouped (804 earnings for 816 earning groups). Null when the
/// part has none.
KETEBIONPAP_HOST const TGroupKind *GroupKindOf(TSoftwarePart part);

/// Tells the user when a group is the one that stands for all, which nobody changes. True: it is.
bool RefuseGroupOfAll(const TGroupKind &kind, int code);

struct TGroup {
    int code = 0;
    QString name;
};

/// One group: a code that the host allots, and a name that no other group of the kind has.
class KETEBIONPAP_HOST TGroupGet_FRM : public TRecordGet<TGroup> {
    Q_OBJECT
public:
    explicit TGroupGet_FRM(const TGroupKind &kind);
    TGroupGet_FRM(const TGroupKind &kind, int code);

    TSmartEdit_ZLM *Code_EDT = nullptr;
    TSmartEdit_ZLM *Name_EDT = nullptr;

protected:
    bool Validate() override;
    bool RecordExists() override;
    bool SaveRecord() override;
    QString LockedEntityWord() const override;
    QWidget *FirstInput() override { return Name_EDT; }

private:
    void build();
    const TGroupKind &m_kind;
};

/// The groups of a kind, to pick one (mode 5) or to keep them up.
class KETEBIONPAP_HOST TGroupList_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    TGroupList_FRM(TFormMode mode, const TGroupKind &kind, const QString &text);
    ~TGroupList_FRM() override;
    int SelectedCode = 0;

    /// Right, lock, question, event, delete. True when the group went. `part`: the one that the caller names, whose
    /// right is asked and that the event is logged under.
    static bool Delete(const TGroupKind &kind, int code, TSoftwarePart part);

protected:
    void SetListText() override;
    TBaseGet_FRM *CreateEditor(bool newRecord) override;
    void DeleteRecord() override;
    bool SelectRecord() override;
    void UpdateButtons() override;

private:
    const TGroupKind &m_kind;
    TQuery m_query;
};
