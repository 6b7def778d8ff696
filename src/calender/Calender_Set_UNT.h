#pragma once

#include "calender/CalenderDays.h"
#include "host/NewBaseForms_PKG/BaseGet_UNT.h"

class QLabel;
class QProgressBar;

/// Generates the days of a date range in one go: working days, weekly holidays and the fixed official holidays.
///
/// Days are stored one by one without a transaction: those that were stored before a failure or a cancel stay, have
/// their line in the event log, and the inputs then hold what is left. One workstation generates at a time: the
/// calendar's lock is held meanwhile, and under it the range is looked at again.
class TCalender_Set_FRM : public TBaseGet_FRM {
    Q_OBJECT
public:
    TCalender_Set_FRM(TSoftwarePart part, bool flag, const QString &text);

    TSmartEdit_ZLM *Title_EDT = nullptr;
    TSmartDateEdit_ZLM *Date1_EDT = nullptr;
    TSmartComboBox_ZLM *StartDay_CMB = nullptr;
    TSmartEdit_ZLM *Comment_EDT = nullptr;
    TSmartComboBox_ZLM *WeekEnd_CMB = nullptr;
    TSmartDateEdit_ZLM *Date2_EDT = nullptr;
    QLabel *StartDayHint_LBL = nullptr;  ///< the real weekday of the from-date, while another one is chosen
    QLabel *Date2Hint_LBL = nullptr;     ///< how many days the to-date's month has, while it goes beyond them
    QProgressBar *Progress_PB = nullptr; ///< stands there while days are stored
    QLabel *Progress_LBL = nullptr;      ///< beside it: how many of how many days, and the last one's date
    TSmartButton_ZLM *Cancel_BTN = nullptr; ///< beside it, with the focus; Esc does the same

protected:
    bool Validate() override;
    void ClearRecord() override;
    bool SaveRecord() override;
    QWidget *FirstInput() override { return Title_EDT; }
    QString EventText() const override; ///< the dates from and to
    void reject() override;

private:
    CalenderDays::Range range() const;
    bool rangeIsFree();
    bool takeCalendar();
    qsizetype store(const QList<TCalenderMapper> &days);
    void tellHowFar(const QList<TCalenderMapper> &days, qsizetype stored, const QString &title);
    void showStartDayHint();
    void showDate2Hint();
    void showGenerating(bool on);
    bool m_generating = false;
    bool m_stopped = false;
    bool m_failed = false;
};
