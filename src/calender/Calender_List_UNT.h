#pragma once

#include "calender/Calender_DM_UNT.h"
#include "host/NewBaseForms_PKG/BaseDock_UNT.h"

class TRange_Date_Search_Frame;

/// The list of the stored calendar days.
class TCalender_List_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    TCalender_List_FRM(TFormMode mode, const QString &text);

    TRange_Date_Search_Frame *Range_Date_Search = nullptr;

protected:
    void SetListText() override;
    void PrepareSearch() override;
    TBaseGet_FRM *CreateEditor(bool newRecord) override;
    bool ShowEditor(TBaseGet_FRM *editor) override;
    void DeleteRecord() override;

private:
    TDataModuleHolder<TCalender_DM> m_data;
};
extern TCalender_List_FRM *Calender_List_FRM;
