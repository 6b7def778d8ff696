#pragma once

#include "host/NewBaseForms_PKG/BaseDock_UNT.h"

class QTimer;
class TPictureBox_ZLM;
class TRange_Date_Search_Frame;

/// The list of the employees of a group: all, employed, or those who left.
class TStaffList_FRM : public TBaseDock_FRM {
    Q_OBJECT
public:
    TStaffList_FRM(TFormMode mode, const QString &text);
    ~TStaffList_FRM() override;

    // The chosen employee, in select mode.
    int SelectedCode = 0;
    int SelectedStaffGroup = 0;
    QString SelectedFullName;

    TRange_Date_Search_Frame *Range_Date_Search = nullptr;
    TSmartButton_ZLM *ShowPicture_BTN = nullptr;
    QWidget *Pic_Show = nullptr;         ///< the picture panel
    TPictureBox_ZLM *Pic_IMG = nullptr;  ///< photograph
    TPictureBox_ZLM *Pic_IMG2 = nullptr; ///< fingerprint

protected:
    void SetListText() override;
    void PrepareSearch() override;
    TBaseGet_FRM *CreateEditor(bool newRecord) override;
    void NewRecord() override;
    void DeleteRecord() override;
    bool SelectRecord() override;
    QString RecordName() const override;

private:
    void buildSearch();
    void buildGroups();
    void buildPictures();
    TStatement ownFilter() const;
    void search();
    void chooseGroup();
    void showPicturePanel(bool show);
    void showPictures();
    QTimer *m_pictures; ///< pictures follow the row, so that stepping through the rows never waits for them
};

/// The one instance, made and freed by the entry points.
extern TStaffList_FRM *StaffList_FRM;
