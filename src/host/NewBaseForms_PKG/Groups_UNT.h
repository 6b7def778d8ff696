#pragma once

#include "host/Export.h"
#include "host/Groups_PKG/GroupRecord_UNT.h"
#include "host/NewBaseForms_PKG/BaseDock_UNT.h"
#include "host/NewBaseForms_PKG/RecordGet.h"
#include "host/database/Query.h"

/// Tells the user when a group is the one that stands for all, which nobody changes. True: it is.
bool RefuseGroupOfAll(const TGroupKind &kind, int code);

/// One group: a code that the host allots, and a name that no other group of the kind has.
class KETEBIONPAP_HOST TGroupGet_FRM : public TRecordGet<TGroup_Mapper> {
    Q_OBJECT
    const TBoundInputs<TGroup_Mapper> &m_inputs =
        MakeInputs(groupFields()); ///< before those who look for them

public:
    explicit TGroupGet_FRM(const TGroupKind &kind);
    TGroupGet_FRM(const TGroupKind &kind, int code);

    TSmartEdit_ZLM *const Code_EDT = Input<TSmartEdit_ZLM>("Code_EDT");
    TSmartEdit_ZLM *const Name_EDT = Input<TSmartEdit_ZLM>("Name_EDT");

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
