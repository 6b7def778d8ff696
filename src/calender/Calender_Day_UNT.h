#pragma once

#include "calender/CalenderRules.h"
#include "host/NewBaseForms_PKG/RecordGet.h"

class QLabel;
class QRadioButton;

/// Changes title, type and comment of one stored day, which is the current one of the list. Date and weekday stay
/// whatever stands in the date input.
class TCalender_Day_FRM : public TRecordGet<TCalenderMapper> {
    Q_OBJECT
    const TBoundInputs<TCalenderMapper> &m_inputs =
        MakeInputs(dayFields()); ///< before those who look for them

public:
    /// `code`: the day's ID.
    TCalender_Day_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag);

    TSmartDateEdit_ZLM *const Date_EDT = Input<TSmartDateEdit_ZLM>("Date_EDT");
    QLabel *Day_LBL = nullptr;
    TSmartEdit_ZLM *const Title_EDT = Input<TSmartEdit_ZLM>("Title_EDT");
    TSmartEdit_ZLM *const Comment_EDT = Input<TSmartEdit_ZLM>("Comment_EDT");
    // The types of a day, in their order.
    QRadioButton *WorkDay_RB = nullptr;
    QRadioButton *WeekEnd_RB = nullptr;
    QRadioButton *Holiday_RB = nullptr;

protected:
    bool Validate() override;
    void ShowRecord() override;
    TCalenderMapper Typed() const override;
    QString EventText() const override { return Stored._Date; }
    QWidget *FirstInput() override { return Title_EDT; }

private:
    bool keeps(const TRule<TDaySubject> &rule);
};
