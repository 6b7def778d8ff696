#pragma once

#include "host/BaseFrame_PKG/Search_Frame.h"
#include "host/Export.h"
#include "host/ZelmoSearch/ZelmoSearchManager.h"

class TSmartDateEdit_ZLM;

/// From one Persian date to another on one item of the list; either end may stay empty. While a date is half typed
/// the list stays as it is.
class KETEBIONPAP_HOST TRange_Date_Search_Frame : public TSearch_Frame {
    Q_OBJECT
public:
    explicit TRange_Date_Search_Frame(QWidget *parent);
    /// Empties both dates and takes the condition back; does not run the search.
    void init(TZelmoSearchManager *manager, const TSearchItem &item);
    TSmartDateEdit_ZLM *FromDate_EDT() const { return m_from; }
    TSmartDateEdit_ZLM *ToDate_EDT() const { return m_to; }

protected:
    bool SetConditions(bool active) override;

private:
    TSearchItem m_item;
    TSmartDateEdit_ZLM *m_from;
    TSmartDateEdit_ZLM *m_to;
};
