#pragma once

#include "host/BaseFrame_PKG/Search_Frame.h"
#include "host/Export.h"

class TSmartComboBox_ZLM;
class TSmartEdit_ZLM;

/// Pick the column, type, the list narrows while typing. Down and Enter go to the list; Esc empties a text first.
class KETEBIONPAP_HOST TGeneral_Search_Frame : public TSearch_Frame {
    Q_OBJECT
public:
    explicit TGeneral_Search_Frame(QWidget *parent);
    /// Offers the manager's items (the default one chosen), empties the text and runs the search.
    void init(TZelmoSearchManager *manager);
    TSmartComboBox_ZLM *Field_CMB() const { return m_field; }
    TSmartEdit_ZLM *Search_EDT() const { return m_text; }

Q_SIGNALS:
    void leaveDown(); ///< Down or Enter was pressed: on to the list

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool SetConditions(bool active) override;

private:
    TSmartComboBox_ZLM *m_field;
    TSmartEdit_ZLM *m_text;
};
