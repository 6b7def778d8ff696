#pragma once

#include "host/NewBaseForms_PKG/RecordGet.h"
#include "staff/StaffFamilyRows.h"
#include "staff/StaffFields.h"
#include "staff/StaffRules.h"

#include <QTabWidget>

class QFileDialog;
class TDetail_Rows_Frame;
class TPic_Get;

/// The editor of one employee: general, personnel and supplementary data, pictures, and the family, whose rows stand
/// in the working table until the employee is saved.
class TStaffGet_FRM : public TRecordGet<TStaff_Mapper> {
    Q_OBJECT
public:
    QTabWidget *const Staff_PC = new QTabWidget(this); ///< first: the focus goes from it to the inputs

private:
    const TBoundInputs<TStaff_Mapper> &m_inputs =
        MakeInputs(staffFields()); ///< before those who look for them by name

public:
    /// A new employee; `text` is the code of the group that the list stands on.
    TStaffGet_FRM(TSoftwarePart part, bool flag, const QString &text);
    TStaffGet_FRM(TSoftwarePart part, const QVariant &code, TFormMode mode, bool flag);

    // ts1, general.
    TSmartEdit_ZLM *const Code_EDT = Input<TSmartEdit_ZLM>("Code_EDT");
    TSmartEdit_ZLM *const Name_EDT = Input<TSmartEdit_ZLM>("Name_EDT");
    TSmartEdit_ZLM *const LastName_EDT = Input<TSmartEdit_ZLM>("LastName_EDT");
    TSmartMaskEdit_ZLM *const NationalCode_EDT = Input<TSmartMaskEdit_ZLM>("NationalCode_EDT");
    TSmartComboBox_ZLM *const Sex_CMB = Input<TSmartComboBox_ZLM>("Sex_CMB");
    TSmartEdit_ZLM *const BirthPlace_EDT = Input<TSmartEdit_ZLM>("BirthPlace_EDT");
    TSmartEdit_ZLM *const IssuePlace_EDT = Input<TSmartEdit_ZLM>("IssuePlace_EDT");
    TSmartComboBox_ZLM *const StaffGroup_CMB = Input<TSmartComboBox_ZLM>("StaffGroup_CMB");
    TSmartMaskEdit_ZLM *const IDNumber_EDT = Input<TSmartMaskEdit_ZLM>("IDNumber_EDT");
    TSmartEdit_ZLM *const FatherName_EDT = Input<TSmartEdit_ZLM>("FatherName_EDT");
    TSmartDateEdit_ZLM *const BirthDate_EDT = Input<TSmartDateEdit_ZLM>("BirthDate_EDT");
    TSmartDateEdit_ZLM *const IssueDate_EDT = Input<TSmartDateEdit_ZLM>("IssueDate_EDT");
    TSmartComboBox_ZLM *const IsMarried_CMB = Input<TSmartComboBox_ZLM>("IsMarried_CMB");
    TPic_Get *Picture_Get = nullptr;
    TPic_Get *FingerPrint_Get = nullptr;
    QFileDialog *OpenPictureDialog = nullptr; ///< serves both pictures; made when it is first needed

    // ts2, personnel.
    TSmartDateEdit_ZLM *const CoDate_EDT = Input<TSmartDateEdit_ZLM>("CoDate_EDT");
    TSmartComboBox_ZLM *const EmploymentTitle_CMB = Input<TSmartComboBox_ZLM>("EmploymentTitle_CMB");
    TSmartComboBox_ZLM *const FiscalExemption_CMB = Input<TSmartComboBox_ZLM>("FiscalExemption_CMB");
    TSmartEdit_ZLM *const PersonnelCode_EDT = Input<TSmartEdit_ZLM>("PersonnelCode_EDT");
    TSmartEdit_ZLM *const Job_EDT = Input<TSmartEdit_ZLM>("Job_EDT");
    TSmartEdit_ZLM *const BankTitle_EDT = Input<TSmartEdit_ZLM>("BankTitle_EDT");
    TSmartComboBox_ZLM *const Insurance_CMB = Input<TSmartComboBox_ZLM>("Insurance_CMB");
    TSmartEdit_ZLM *const Comment_EDT = Input<TSmartEdit_ZLM>("Comment_EDT");
    TSmartCheckBox_ZLM *LeaveDate_CHK = nullptr;
    QLabel *LeaveDate_LBL = nullptr;
    TSmartDateEdit_ZLM *const LeaveDate_EDT = Input<TSmartDateEdit_ZLM>("LeaveDate_EDT");
    TSmartComboBox_ZLM *const Category_CMB = Input<TSmartComboBox_ZLM>("Category_CMB");
    TSmartComboBox_ZLM *const National_CMB = Input<TSmartComboBox_ZLM>("National_CMB");
    TSmartEdit_ZLM *const CardNumber_EDT = Input<TSmartEdit_ZLM>("CardNumber_EDT");
    TSmartEdit_ZLM *const Department_EDT = Input<TSmartEdit_ZLM>("Department_EDT");
    TSmartEdit_ZLM *const AccountNumber_EDT = Input<TSmartEdit_ZLM>("AccountNumber_EDT");
    TSmartEdit_ZLM *const InsuranceNumber_EDT = Input<TSmartEdit_ZLM>("InsuranceNumber_EDT");
    TSmartEdit_ZLM *const JobCode_EDT = Input<TSmartEdit_ZLM>("JobCode_EDT");
    TSmartEdit_ZLM *const JobGroup_EDT = Input<TSmartEdit_ZLM>("JobGroup_EDT");

    // ts3, supplementary.
    TSmartMaskEdit_ZLM *const Tel1_EDT = Input<TSmartMaskEdit_ZLM>("Tel1_EDT");
    TSmartMaskEdit_ZLM *const Tel2_EDT = Input<TSmartMaskEdit_ZLM>("Tel2_EDT");
    TSmartEdit_ZLM *const Fax_EDT = Input<TSmartEdit_ZLM>("Fax_EDT");
    TSmartEdit_ZLM *const Mobile_EDT = Input<TSmartEdit_ZLM>("Mobile_EDT");
    TSmartEdit_ZLM *const Addr1_EDT = Input<TSmartEdit_ZLM>("Addr1_EDT");
    TSmartEdit_ZLM *const Addr2_EDT = Input<TSmartEdit_ZLM>("Addr2_EDT");
    TSmartMaskEdit_ZLM *const PostCode_EDT = Input<TSmartMaskEdit_ZLM>("PostCode_EDT");
    TSmartComboBox_ZLM *const Degree_CMB = Input<TSmartComboBox_ZLM>("Degree_CMB");
    TSmartComboBox_ZLM *const Military_CMB = Input<TSmartComboBox_ZLM>("Military_CMB");
    TSmartEdit_ZLM *const Major_EDT = Input<TSmartEdit_ZLM>("Major_EDT");
    TSmartMaskEdit_ZLM *const Email_EDT = Input<TSmartMaskEdit_ZLM>("Email_EDT");

protected:
    bool Validate() override;
    void ClearRecord() override;
    void LoadRecord() override;
    void ShowRecord() override;
    TStaff_Mapper Typed() const override;
    bool SaveRecord() override;
    QVariant SentRecord() override;
    void BeforeClose() override;
    QWidget *FirstInput() override;
    QString LockedEntityWord() const override;

    TRecordRows *Rows() override { return m_workingRows.get(); }
    void SaveFailed() override;
    bool MayDiscard() override;

private:
    void build();
    void buildGeneral();
    void buildPersonnel();
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

    // The validation and the save stand in StaffSave.cpp.
    TStaffSubject subject() const;
    /// Notes who saves the employee, and when.
    static void mark(TStaff_Mapper &staff, bool newRecord);
    bool familyIsGone();
    void fillPerson();
    bool savePicture(const TPic_Get *picture, const QString &column);

    const std::unique_ptr<TRecordRows> m_workingRows = FamilyRows();
    TDetail_Rows_Frame *m_family = nullptr;
    TPerinf_Mapper m_person;
    bool m_showing = false;    ///< inputs are being filled by the program
    int m_savedMembers = 0;    ///< saved family rows that a save which did not come to its end has cleared
    bool m_saveFailed = false; ///< what StaffGet_QUR holds may be rolled back by now
};
