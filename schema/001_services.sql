-- What the suite itself keeps: users and their rights, the event log, workstations, code locks.
CREATE TABLE UserAccount (
    Code INT NOT NULL CONSTRAINT PK_UserAccount PRIMARY KEY,
    Name NVARCHAR(50) NOT NULL CONSTRAINT UQ_UserAccount_Name UNIQUE,
    FullName NVARCHAR(100) NULL,
    PasswordHash NVARCHAR(200) NULL,
    IsAdmin BIT NOT NULL CONSTRAINT DF_UserAccount_IsAdmin DEFAULT 0,
    IsActive BIT NOT NULL CONSTRAINT DF_UserAccount_IsActive DEFAULT 1,
    FailedCount INT NOT NULL CONSTRAINT DF_UserAccount_FailedCount DEFAULT 0,
    NextTry NVARCHAR(19) NULL
)
GO
CREATE TABLE UserRight (
    UserCode INT NOT NULL,
    SoftwarePart INT NOT NULL,
    Permission INT NOT NULL,
    CONSTRAINT PK_UserRight PRIMARY KEY (UserCode, SoftwarePart, Permission)
)
GO
-- A line outlives its user: it carries the name and refers to nothing.
CREATE TABLE UserEvent (
    ID INT IDENTITY(1,1) NOT NULL CONSTRAINT PK_UserEvent PRIMARY KEY,
    UserCode INT NULL,
    UserName NVARCHAR(50) NULL,
    Com_Index INT NULL,
    SoftwarePart INT NULL,
    Permission INT NULL,
    EventText NVARCHAR(400) NULL,
    EventDate NVARCHAR(10) NULL,
    EventTime NVARCHAR(8) NULL,
    OfSystem BIT NOT NULL CONSTRAINT DF_UserEvent_OfSystem DEFAULT 0
)
GO
CREATE INDEX IX_UserEvent_EventDate ON UserEvent (EventDate)
GO
CREATE TABLE CodeLock_TBL (
    Code NVARCHAR(20) NOT NULL,
    Status INT NOT NULL,
    Com_Index INT NOT NULL,
    UserName NVARCHAR(50) NULL,
    ProcessID INT NULL,
    LockedAt NVARCHAR(19) NULL,
    CONSTRAINT PK_CodeLock_TBL PRIMARY KEY (Code, Status)
)
GO
CREATE TABLE Workstation (
    Com_Index INT NOT NULL CONSTRAINT PK_Workstation PRIMARY KEY,
    Name NVARCHAR(100) NULL,
    LastSeen NVARCHAR(19) NULL
)
GO
GO
-- Settings that all workstations share, by number.
CREATE TABLE CustomParam (
    Number INT NOT NULL CONSTRAINT PK_CustomParam PRIMARY KEY,
    Value NVARCHAR(200) NULL
)
