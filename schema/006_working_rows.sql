-- A process is known by its start and its machine, too: numbers come round again, and each container counts its own.
ALTER TABLE CodeLock_TBL ADD Process NVARCHAR(100) NULL
GO
-- The tables in which editors keep rows until they are saved, by part, with the tables that hold the saved ones: for
-- administration, which gives up codes without knowing whose rows they are.
CREATE TABLE WorkingTable (
    Status INT NOT NULL CONSTRAINT PK_WorkingTable PRIMARY KEY,
    TableName NVARCHAR(50) NOT NULL,
    StoredName NVARCHAR(50) NOT NULL,
    CodeColumn NVARCHAR(50) NOT NULL
)
GO
INSERT INTO WorkingTable (Status, TableName, StoredName, CodeColumn) VALUES
    (802, N'TmpTax', N'Tax', N'TaxMainCode'),
    (806, N'tmpStaffFamily', N'StaffFamily', N'StaffCode')
GO
-- Which process opened the working rows of a record that is not locked while it is open (an existing tax table).
CREATE TABLE WorkingRows (
    Status INT NOT NULL,
    Code INT NOT NULL,
    Com_Index INT NOT NULL,
    UserName NVARCHAR(50) NULL,
    ProcessID INT NULL,
    Process NVARCHAR(100) NULL,
    CONSTRAINT PK_WorkingRows PRIMARY KEY (Status, Code)
)
