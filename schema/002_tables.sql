-- The master data of the payroll.
-- An amount has up to 15 digits before the point and 9 behind it: an input takes 15.
-- A BIT without a value is false: a record that another program of the suite wrote shows as "no" in every list.
CREATE TABLE PayrollInfo (
    Code INT NOT NULL CONSTRAINT PK_PayrollInfo PRIMARY KEY,
    Value NVARCHAR(300) NULL
)
GO
CREATE TABLE PayrollInfoDetail (
    ID INT IDENTITY(1,1) NOT NULL CONSTRAINT PK_PayrollInfoDetail PRIMARY KEY,
    Type BIT NOT NULL CONSTRAINT DF_PayrollInfoDetail_Type DEFAULT 0,
    Code INT NULL,
    Title NVARCHAR(50) NULL,
    UserCode INT NULL
)
GO
CREATE INDEX IX_PayrollInfoDetail_UserCode ON PayrollInfoDetail (UserCode, Type, Code)
GO
CREATE TABLE TaxMain (
    Code INT NOT NULL CONSTRAINT PK_TaxMain PRIMARY KEY,
    Title NVARCHAR(50) NULL,
    Comment NVARCHAR(100) NULL
)
GO
CREATE TABLE Tax (
    TaxMainCode INT NOT NULL CONSTRAINT FK_Tax_TaxMain REFERENCES TaxMain (Code),
    FromSalary DECIMAL(24,9) NULL,
    ToSalary DECIMAL(24,9) NULL,
    Comment NVARCHAR(50) NULL,
    [Percent] DECIMAL(24,9) NULL
)
GO
CREATE INDEX IX_Tax_TaxMainCode ON Tax (TaxMainCode)
GO
-- Working rows: their tax table may not be stored yet.
CREATE TABLE TmpTax (
    ID INT IDENTITY(1,1) NOT NULL CONSTRAINT PK_TmpTax PRIMARY KEY,
    TaxMainCode INT NOT NULL,
    FromSalary DECIMAL(24,9) NULL,
    ToSalary DECIMAL(24,9) NULL,
    Comment NVARCHAR(50) NULL,
    [Percent] DECIMAL(24,9) NULL
)
GO
CREATE INDEX IX_TmpTax_TaxMainCode ON TmpTax (TaxMainCode, FromSalary)
GO
-- TaxMainCode 0 stands for no tax table, so it is guarded by a trigger of TaxMain and not by a key.
CREATE TABLE CalcMethod (
    Code INT NOT NULL CONSTRAINT PK_CalcMethod PRIMARY KEY,
    Title NVARCHAR(50) NULL,
    StaffIns DECIMAL(24,9) NULL,
    EmployerIns DECIMAL(24,9) NULL,
    DailyIns DECIMAL(24,9) NULL,
    OverTime INT NULL,
    TaxMainCode INT NULL,
    DecTax BIT NOT NULL CONSTRAINT DF_CalcMethod_DecTax DEFAULT 0,
    Maskok INT NULL,
    LeaveCeil DECIMAL(24,9) NULL,
    [OutPut] DECIMAL(24,9) NULL,
    Comment NVARCHAR(100) NULL,
    Insurance BIT NOT NULL CONSTRAINT DF_CalcMethod_Insurance DEFAULT 0,
    Tax BIT NOT NULL CONSTRAINT DF_CalcMethod_Tax DEFAULT 0,
    BedBes BIT NOT NULL CONSTRAINT DF_CalcMethod_BedBes DEFAULT 0,
    Loan BIT NOT NULL CONSTRAINT DF_CalcMethod_Loan DEFAULT 0,
    OverDis BIT NOT NULL CONSTRAINT DF_CalcMethod_OverDis DEFAULT 0,
    Entrance NVARCHAR(5) NULL,
    [Exit] NVARCHAR(5) NULL
)
GO
CREATE INDEX IX_CalcMethod_TaxMainCode ON CalcMethod (TaxMainCode)
GO
CREATE TABLE Calender (
    ID INT IDENTITY(1,1) NOT NULL CONSTRAINT PK_Calender PRIMARY KEY,
    Date NVARCHAR(10) NULL,
    Day SMALLINT NULL,
    Type SMALLINT NULL,
    Title NVARCHAR(30) NULL,
    Comment NVARCHAR(50) NULL
)
GO
CREATE INDEX IX_Calender_Date ON Calender (Date)
GO
CREATE TABLE StaffGroup (
    Code INT NOT NULL CONSTRAINT PK_StaffGroup PRIMARY KEY,
    Name NVARCHAR(50) NULL
)
GO
-- The pictures stand last: a column behind them is reached through all their pages.
CREATE TABLE Staff (
    Code INT NOT NULL CONSTRAINT PK_Staff PRIMARY KEY,
    StaffGroup INT NULL CONSTRAINT FK_Staff_StaffGroup REFERENCES StaffGroup (Code),
    PersonnelCode NVARCHAR(20) NULL,
    InsuranceNumber NVARCHAR(20) NULL,
    CardNumber NVARCHAR(20) NULL,
    NationalID NVARCHAR(20) NULL,
    Sex BIT NOT NULL CONSTRAINT DF_Staff_Sex DEFAULT 0,
    FatherName NVARCHAR(30) NULL,
    IDNumber NVARCHAR(20) NULL,
    BirthDate NVARCHAR(10) NULL,
    BirthPlace NVARCHAR(30) NULL,
    Department NVARCHAR(50) NULL,
    Degree SMALLINT NULL,
    Major NVARCHAR(50) NULL,
    Military SMALLINT NULL,
    IsMarried BIT NOT NULL CONSTRAINT DF_Staff_IsMarried DEFAULT 0,
    AccountNumber NVARCHAR(50) NULL,
    BankTitle NVARCHAR(50) NULL,
    CoDate NVARCHAR(10) NULL,
    Job NVARCHAR(20) NULL,
    Comment NVARCHAR(150) NULL,
    Name NVARCHAR(50) NULL,
    LastName NVARCHAR(100) NULL,
    Tel1 NVARCHAR(50) NULL,
    Tel2 NVARCHAR(50) NULL,
    Fax NVARCHAR(50) NULL,
    Mob NVARCHAR(50) NULL,
    Add1 NVARCHAR(300) NULL,
    Add2 NVARCHAR(300) NULL,
    Email NVARCHAR(50) NULL,
    LeaveDate NVARCHAR(10) NOT NULL CONSTRAINT DF_Staff_LeaveDate DEFAULT N'',
    Employment INT NULL,
    PostCode NVARCHAR(10) NULL,
    Category INT NULL,
    FiscalExemption INT NULL,
    [National] INT NULL,
    Insurance INT NULL,
    IssuePlace NVARCHAR(50) NULL,
    IssueDate NVARCHAR(10) NULL,
    JobCode NVARCHAR(6) NULL,
    JobGroup NVARCHAR(100) NULL,
    CreatedTime NVARCHAR(5) NULL,
    CreatedDate NVARCHAR(10) NULL,
    ModifiedTime NVARCHAR(5) NULL,
    ModifiedDate NVARCHAR(10) NULL,
    UserCreated NVARCHAR(50) NULL,
    UserModified NVARCHAR(50) NULL,
    Picture VARBINARY(MAX) NULL,
    FingerPrint VARBINARY(MAX) NULL
)
GO
-- The list's groups and tabs, each in the order of the list.
CREATE INDEX IX_Staff_StaffGroup ON Staff (StaffGroup, Code)
GO
CREATE INDEX IX_Staff_Group_LeaveDate ON Staff (StaffGroup, LeaveDate, Code)
GO
-- The general search looks through the full names of all, or of those employed, in the order of the list.
CREATE INDEX IX_Staff_LeaveDate ON Staff (LeaveDate, Code, Name, LastName)
GO
CREATE INDEX IX_Staff_Names ON Staff (Code, Name, LastName)
GO
CREATE INDEX IX_Staff_LastName ON Staff (LastName, Name)
GO
CREATE INDEX IX_Staff_PersonnelCode ON Staff (PersonnelCode)
GO
CREATE INDEX IX_Staff_CardNumber ON Staff (CardNumber)
GO
CREATE INDEX IX_Staff_InsuranceNumber ON Staff (InsuranceNumber)
GO
CREATE INDEX IX_Staff_NationalID ON Staff (NationalID)
GO
-- StaffFamily and tmpStaffFamily have the same columns in the same order: rows are copied whole.
-- The rows of a deleted employee go with him, or the next employee of that code would inherit them.
CREATE TABLE StaffFamily (
    ID INT NOT NULL CONSTRAINT PK_StaffFamily PRIMARY KEY,
    StaffCode INT NOT NULL CONSTRAINT FK_StaffFamily_Staff REFERENCES Staff (Code) ON DELETE CASCADE,
    Type SMALLINT NULL,
    Name NVARCHAR(50) NULL,
    Sex BIT NOT NULL CONSTRAINT DF_StaffFamily_Sex DEFAULT 0,
    InsuranceNumber NVARCHAR(20) NULL,
    BirthDate NVARCHAR(10) NULL,
    Death BIT NOT NULL CONSTRAINT DF_StaffFamily_Death DEFAULT 0,
    DeathDate NVARCHAR(50) NULL,
    Comment NVARCHAR(10) NULL
)
GO
CREATE INDEX IX_StaffFamily_StaffCode ON StaffFamily (StaffCode)
GO
CREATE TABLE tmpStaffFamily (
    ID INT NOT NULL CONSTRAINT PK_tmpStaffFamily PRIMARY KEY,
    StaffCode INT NOT NULL,
    Type SMALLINT NULL,
    Name NVARCHAR(50) NULL,
    Sex BIT NOT NULL CONSTRAINT DF_tmpStaffFamily_Sex DEFAULT 0,
    InsuranceNumber NVARCHAR(20) NULL,
    BirthDate NVARCHAR(10) NULL,
    Death BIT NOT NULL CONSTRAINT DF_tmpStaffFamily_Death DEFAULT 0,
    DeathDate NVARCHAR(50) NULL,
    Comment NVARCHAR(10) NULL
)
GO
CREATE INDEX IX_tmpStaffFamily_StaffCode ON tmpStaffFamily (StaffCode)
GO
CREATE TABLE PersonGroup (
    Code INT NOT NULL CONSTRAINT PK_PersonGroup PRIMARY KEY,
    Name NVARCHAR(50) NULL
)
GO
CREATE TABLE Perinf (
    code INT NOT NULL CONSTRAINT PK_Perinf PRIMARY KEY,
    Name NVARCHAR(50) NULL,
    LName NVARCHAR(100) NULL,
    GrpCode INT NULL CONSTRAINT FK_Perinf_PersonGroup REFERENCES PersonGroup (Code),
    Identifier NVARCHAR(50) NULL,
    ComName NVARCHAR(50) NULL,
    Tel1 NVARCHAR(50) NULL,
    Tel2 NVARCHAR(50) NULL,
    Fax NVARCHAR(50) NULL,
    Mobile NVARCHAR(50) NULL,
    Addr1 NVARCHAR(300) NULL,
    Addr2 NVARCHAR(300) NULL,
    Email NVARCHAR(50) NULL,
    Comment NVARCHAR(200) NULL,
    Credit DECIMAL(24,9) NULL,
    SitBgPrd SMALLINT NULL,
    RemainBgPrd DECIMAL(24,9) NULL,
    SitPrd SMALLINT NULL,
    RemainPrd DECIMAL(24,9) NULL,
    Status SMALLINT NULL,
    mandeh_check DECIMAL(24,9) NULL,
    fullname NVARCHAR(151) NULL,
    UserName NVARCHAR(50) NULL,
    DetailUniqueCode INT NULL
)
GO
CREATE INDEX IX_Perinf_GrpCode ON Perinf (GrpCode, code)
GO
CREATE INDEX IX_Perinf_LName ON Perinf (LName, Name)
GO
CREATE INDEX IX_Perinf_DetailUniqueCode ON Perinf (DetailUniqueCode)
GO
CREATE TABLE FiscalGrp (
    Code INT NOT NULL CONSTRAINT PK_FiscalGrp PRIMARY KEY,
    Name NVARCHAR(50) NULL
)
GO
CREATE TABLE DeductionGrp (
    Code INT NOT NULL CONSTRAINT PK_DeductionGrp PRIMARY KEY,
    Name NVARCHAR(50) NULL
)
GO
CREATE TABLE Fiscal (
    Code INT NOT NULL CONSTRAINT PK_Fiscal PRIMARY KEY,
    Title NVARCHAR(50) NULL,
    Tax BIT NOT NULL CONSTRAINT DF_Fiscal_Tax DEFAULT 0,
    Insurance BIT NOT NULL CONSTRAINT DF_Fiscal_Insurance DEFAULT 0,
    Comment NVARCHAR(500) NULL,
    CalcType SMALLINT NULL,
    GrpCode INT NULL CONSTRAINT FK_Fiscal_FiscalGrp REFERENCES FiscalGrp (Code),
    Kol SMALLINT NULL,
    Moin SMALLINT NULL,
    Tafzili INT NULL,
    Cost DECIMAL(24,9) NULL
)
GO
CREATE INDEX IX_Fiscal_GrpCode ON Fiscal (GrpCode, Code)
GO
CREATE INDEX IX_Fiscal_Title ON Fiscal (Title)
GO
-- The detail account is narrower than that of an earning.
CREATE TABLE Deduction (
    Code INT NOT NULL CONSTRAINT PK_Deduction PRIMARY KEY,
    Title NVARCHAR(50) NULL,
    Comment NVARCHAR(500) NULL,
    CalcType SMALLINT NULL,
    GrpCode INT NULL CONSTRAINT FK_Deduction_DeductionGrp REFERENCES DeductionGrp (Code),
    Kol SMALLINT NULL,
    Moin SMALLINT NULL,
    Tafzili SMALLINT NULL,
    Cost DECIMAL(24,9) NULL
)
GO
CREATE INDEX IX_Deduction_GrpCode ON Deduction (GrpCode, Code)
GO
CREATE INDEX IX_Deduction_Title ON Deduction (Title)
GO
-- The chart of accounts: totals, their assistants, and details.
CREATE TABLE AccountTotal (
    Kol SMALLINT NOT NULL CONSTRAINT PK_AccountTotal PRIMARY KEY,
    Name NVARCHAR(100) NULL
)
GO
CREATE TABLE AccountAssistant (
    Kol SMALLINT NOT NULL CONSTRAINT FK_AccountAssistant_AccountTotal REFERENCES AccountTotal (Kol),
    Moin SMALLINT NOT NULL,
    Name NVARCHAR(100) NULL,
    CONSTRAINT PK_AccountAssistant PRIMARY KEY (Kol, Moin)
)
GO
CREATE TABLE AccountDetail (
    Tafzili INT NOT NULL CONSTRAINT PK_AccountDetail PRIMARY KEY,
    Name NVARCHAR(100) NULL
)
GO
-- Personnel orders and staff outputs, and the working rows of their editors.
CREATE TABLE Recruitment (
    Code INT NOT NULL CONSTRAINT PK_Recruitment PRIMARY KEY,
    StaffCode INT NULL CONSTRAINT FK_Recruitment_Staff REFERENCES Staff (Code),
    DoDate NVARCHAR(10) NULL,
    CalcMethodCode INT NULL CONSTRAINT FK_Recruitment_CalcMethod REFERENCES CalcMethod (Code)
)
GO
CREATE INDEX IX_Recruitment_StaffCode ON Recruitment (StaffCode, DoDate)
GO
CREATE INDEX IX_Recruitment_CalcMethodCode ON Recruitment (CalcMethodCode)
GO
CREATE TABLE StaffOutPut (
    Code INT NOT NULL CONSTRAINT PK_StaffOutPut PRIMARY KEY,
    Title NVARCHAR(100) NULL
)
GO
CREATE TABLE tmpRecFiscal (
    ID INT IDENTITY(1,1) NOT NULL CONSTRAINT PK_tmpRecFiscal PRIMARY KEY,
    RecruitmentCode INT NULL,
    ItemCode INT NULL,
    Cost DECIMAL(24,9) NULL
)
GO
CREATE INDEX IX_tmpRecFiscal_ItemCode ON tmpRecFiscal (ItemCode, RecruitmentCode)
GO
CREATE TABLE tmpRecDeduction (
    ID INT IDENTITY(1,1) NOT NULL CONSTRAINT PK_tmpRecDeduction PRIMARY KEY,
    Recruitmentcode INT NULL,
    ItemCode INT NULL,
    Cost DECIMAL(24,9) NULL
)
GO
CREATE INDEX IX_tmpRecDeduction_ItemCode ON tmpRecDeduction (ItemCode, Recruitmentcode)
GO
CREATE TABLE tmpstaffOutPutDetail (
    ID INT IDENTITY(1,1) NOT NULL CONSTRAINT PK_tmpstaffOutPutDetail PRIMARY KEY,
    OutPutCode INT NULL,
    Amount DECIMAL(24,9) NULL,
    Type BIT NOT NULL CONSTRAINT DF_tmpstaffOutPutDetail_Type DEFAULT 0,
    ItemCode INT NULL
)
GO
CREATE INDEX IX_tmpstaffOutPutDetail_ItemCode ON tmpstaffOutPutDetail (ItemCode, OutPutCode)
GO
CREATE TABLE tmpstaffFiscal (
    ID INT IDENTITY(1,1) NOT NULL CONSTRAINT PK_tmpstaffFiscal PRIMARY KEY,
    ItemCode INT NULL
)
GO
CREATE INDEX IX_tmpstaffFiscal_ItemCode ON tmpstaffFiscal (ItemCode)
GO
CREATE TABLE tmpstaffdeduction (
    ID INT IDENTITY(1,1) NOT NULL CONSTRAINT PK_tmpstaffdeduction PRIMARY KEY,
    ItemCode INT NULL
)
GO
CREATE INDEX IX_tmpstaffdeduction_ItemCode ON tmpstaffdeduction (ItemCode)
GO
CREATE TABLE tmpsalarybilldetail (
    ID INT IDENTITY(1,1) NOT NULL CONSTRAINT PK_tmpsalarybilldetail PRIMARY KEY,
    itemcode INT NULL
)
GO
CREATE INDEX IX_tmpsalarybilldetail_itemcode ON tmpsalarybilldetail (itemcode)
GO
