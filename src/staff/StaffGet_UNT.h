#pragma once

#include "host/NewBaseForms_PKG/BaseGet_UNT.h"
#include "host/ZelmoSearch/FoldedTwin.h"
#include "staff/StaffFamilyRows.h"
#include "staff/Staff_Mapper.h"

class QFileDialog;
class TDetail_Rows_Frame;
class TPic_Get;

/// The editor of one employee: general, personnel and supplementary data, pictures, and the family, whose rows stand
/// in the working table until the employee is saved.
class TStaffGet_FRM : public TBaseGet_FRM {
    Q_OBJECT
public:
    /// A new employee; `text` is the code of the group that the list stands on.
    TStaffGet_FRM(TSoftwarePart part, bool flag, const QString &text);
    TStaffGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag);
    ~TStaffGet_FRM() override;

    QTabWidget *Staff_PC = nullptr;

    // ts1, general.
    TSmartEdit_ZLM *Code_EDT = nullptr;
    TSmartEdit_ZLM *Name_EDT = nullptr;
    TSmartEdit_ZLM *LastName_EDT = nullptr;
    TSmartMaskEdit_ZLM *NationalCode_EDT = nullptr;
    TSmartComboBox_ZLM *Sex_CMB = nullptr;
    TSmartEdit_ZLM *BirthPlace_EDT = nullptr;
    TSmartEdit_ZLM *IssuePlace_EDT = nullptr;
    TSmartComboBox_ZLM *StaffGroup_CMB = nullptr;
    TSmartMaskEdit_ZLM *IDNumber_EDT = nullptr;
    TSmartEdit_ZLM *FatherName_EDT = nullptr;
    TSmartDateEdit_ZLM *BirthDate_EDT = nullptr;
    TSmartDateEdit_ZLM *IssueDate_EDT = nullptr;
    TSmartComboBox_ZLM *IsMarried_CMB = nullptr;
    TPic_Get *Picture_Get = nullptr;
    TPic_Get *FingerPrint_Get = nullptr;
    QFileDialog *OpenPictureDialog = nullptr; ///< serves both pictures; made when it is first needed

    // ts2, personnel.
    TSmartDateEdit_ZLM *CoDate_EDT = nullptr;
    TSmartComboBox_ZLM *EmploymentTitle_CMB = nullptr;
    TSmartComboBox_ZLM *FiscalExemption_CMB = nullptr;
    TSmartEdit_ZLM *PersonnelCode_EDT = nullptr;
    TSmartEdit_ZLM *Job_EDT = nullptr;
    TSmartEdit_ZLM *BankTitle_EDT = nullptr;
    TSmartComboBox_ZLM *Insurance_CMB = nullptr;
    TSmartEdit_ZLM *Comment_EDT = nullptr;
    TSmartCheckBox_ZLM *LeaveDate_CHK = nullptr;
    QLabel *LeaveDate_LBL = nullptr;
    TSmartDateEdit_ZLM *LeaveDate_EDT = nullptr;
    TSmartComboBox_ZLM *Category_CMB = nullptr;
    TSmartComboBox_ZLM *National_CMB = nullptr;
    TSmartEdit_ZLM *CardNumber_EDT = nullptr;
    TSmartEdit_ZLM *Department_EDT = nullptr;
    TSmartEdit_ZLM *AccountNumber_EDT = nullptr;
    TSmartEdit_ZLM *InsuranceNumber_EDT = nullptr;
    TSmartEdit_ZLM *JobCode_EDT = nullptr;
    TSmartEdit_ZLM *JobGroup_EDT = nullptr;

    // ts3, supplementary.
    TSmartMaskEdit_ZLM *Tel1_EDT = nullptr;
    TSmartMaskEdit_ZLM *Tel2_EDT = nullptr;
    TSmartEdit_ZLM *Fax_EDT = nullptr;
    TSmartEdit_ZLM *Mobile_EDT = nullptr;
    TSmartEdit_ZLM *Addr1_EDT = nullptr;
    TSmartEdit_ZLM *Addr2_EDT = nullptr;
    TSmartMaskEdit_ZLM *PostCode_EDT = nullptr;
    TSmartComboBox_ZLM *Degree_CMB = nullptr;
    TSmartComboBox_ZLM *Military_CMB = nullptr;
    TSmartEdit_ZLM *Major_EDT = nullptr;
    TSmartMaskEdit_ZLM *Email_EDT = nullptr;

protected:
    bool Validate() override;
    void ClearRecord() override;
    void LoadRecord() override;
    void ShowRecord() override;
    bool SaveRecord() override;
    void NewCode() override;
    bool RecordExists() override;
    bool StoredIsOwn() override;
    void BeforeClose() override;
    QWidget *FirstInput() override;
    QString LockedEntityWord() const override;

    TRecordRows *Rows() override { return &m_workingRows; }
    void SaveFailed() override;
    bool MayDiscard() override;

private:
    void build();
    void buildGeneral();
    void buildPersonnel();
    void buildSupplementary();
    void buildFamily();
    QFileDialog *pictureDialog();

    void Picture_GetPicInsert_BTNClick();
    void Picture_GetPicDelete_BTNClick();
    void FingerPrint_GetPicInsert_BTNClick();
    void FingerPrint_GetPicDelete_BTNClick();

    int code() const { return Code_EDT->asInteger(); }
    void codeLeft();
    bool takeTypedCode();
    void marriedChanged();
    void leaveDateChanged();
    void fillGroups(int code);
    void showMarried(bool married);
    void addRow();
    void editRow();
    void deleteRow();
    void rereadFamily(const QVariant &id);

    // The steps of the validation; they and the save stand in StaffSave.cpp.
    bool checkGroupChosen();
    bool checkFullName();
    bool checkLeaveAfterEmployment();
    bool checkGroupCode();
    bool checkPersonnelCode();
    bool checkRepeated(TSmartEdit_ZLM *input, const QString &word, const QString &loaded);
    /// Tells that another employee has what the inputs hold, however it is written there. `found`: one who has exactly
    /// that was found before. False: told.
    bool checkTwin(const QList<TUniqueText> &texts, bool found, TSmartEdit_ZLM *input, const QString &word,
                   const QString &entity);
    bool checkOrders();
    bool checkLeaveDateGiven();

    TStaff_Mapper typedStaff(bool newRecord) const;
    bool familyIsGone();
    void fillPerson();
    bool savePicture(const TPic_Get *picture, const QString &column);

    TStaffFamilyRows m_workingRows;
    TDetail_Rows_Frame *m_family = nullptr;
    TStaff_Mapper m_staff; ///< the record as it was loaded; empty for a new one
    TStaff_Mapper m_sent;  ///< by the last save of this record
    TPerinf_Mapper m_person;
    bool m_showing = false;    ///< inputs are being filled by the program
    int m_savedMembers = 0;    ///< saved family rows that a save which did not come to its end has cleared
    bool m_saveFailed = false; ///< what StaffGet_QUR holds may be rolled back by now
};
