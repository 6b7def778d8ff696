#pragma once

#include "entity/Entity_DM_UNT.h"
#include "host/NewBaseForms_PKG/BaseDock_UNT.h"

#include <QSet>

#include <optional>

class QLabel;
class TManyWrites;

/// The list of earnings or of deductions with their groups: to keep them, or to pick items for another editor.
/// The value: the kind (0 earnings, 1 deductions) in mode 1; "kind;call type;target code" in mode 5.
///
/// Call types: 1, 4 and 5 pick the current item; 2 adds the ticked items, or the current one, to the personnel order
/// of the target code; 3 to the staff output of the target code. Others do nothing. Items stay ticked while a search or
/// another group leaves them out of the list, and a line below the list tells how many there are.
/// Makes Entity_DM when it is absent and frees it with the last list.
class TFiscalDeducation_List_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    TFiscalDeducation_List_FRM(TFormMode mode, const QVariant &value, const QString &text);

    int SelectedCode = 0; ///< the picked item, of call types 1, 4 and 5
    QString SelectedTitle;

    bool IsDeduction() const { return m_kind == 1; }

protected:
    void ParameterStep() override;
    void SetListText() override;
    void PrepareSearch() override;
    void AfterShow() override;
    TBaseGet_FRM *CreateEditor(bool newRecord) override;
    void NewRecord() override;
    void DeleteRecord() override;
    bool SelectRecord() override;
    bool ChoiceIsStored() override;

private:
    struct TRow {
        int code;
        int payrollCode;
        int calcType;
        QVariant cost;
    };
    enum class TOutcome { Taken, Refused, Stop };

    TSoftwarePart itemPart() const { return IsDeduction() ? cspDeduction : cspFiscal; }
    TSoftwarePart groupPart() const { return IsDeduction() ? cspDeductionGrp : cspFiscalGrp; }
    QString kindWord() const;
    void pickGroup();
    void connectGroups();
    void takeCurrent();
    bool addChosen();
    /// What became of the items so far.
    struct TAdded {
        bool taken = false;
        bool gone = false;
    };
    /// Adds some of the ticked items; false: the rest of them is not to be added.
    bool addSome(const QList<int> &codes, TAdded &added);
    bool addTicked(const QList<int> &codes, TAdded &added);
    TOutcome add(const TRow &row, bool oneOfMany);
    void sendWaiting();
    QList<int> chosenCodes() const;
    std::optional<TRow> storedRow(int code) const;
    void tellTicks();
    TOutcome addToOrder(const TRow &row, bool oneOfMany);
    TOutcome addToOutput(const TRow &row, bool oneOfMany);
    /// Runs the insert of a row, and notes the row when it got no answer.
    void insert(const TRow &row, const std::function<void()> &work);
    TOutcome refuse(const TRow &row, bool oneOfMany, int noteOfMany, int noteOfOne);
    TOutcome refuseRepeated(const TRow &row, bool oneOfMany);

    QLabel *m_ticks = nullptr;
    TDataModuleHolder<TEntity_DM> m_data;
    const int m_kind;
    int m_callType = 0;
    QString m_target;
    TManyWrites *m_writes = nullptr; ///< while ticked items are added
    QList<int> m_waiting;            ///< items whose inserts wait there
    QSet<int> m_unsure; ///< items whose insert got no answer: found on the target, they are this list's own
};
extern TFiscalDeducation_List_FRM *FiscalDeducation_List_FRM;
