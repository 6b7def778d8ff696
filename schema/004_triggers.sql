-- References that no key can express: a tax table that a method names (0 names none), an item that the settings
-- name by kind and code.
-- engine: sqlite
CREATE TRIGGER TaxMain_Delete_TRG BEFORE DELETE ON TaxMain
WHEN EXISTS (SELECT 1 FROM CalcMethod WHERE TaxMainCode = OLD.Code)
BEGIN
    SELECT RAISE(ABORT, 'a calculation method refers to the tax table');
END
GO
-- engine: sqlserver
CREATE TRIGGER TaxMain_Delete_TRG ON TaxMain INSTEAD OF DELETE AS
BEGIN
    SET NOCOUNT ON
    IF EXISTS (SELECT 1 FROM deleted AS o INNER JOIN CalcMethod AS m ON m.TaxMainCode = o.Code)
        RAISERROR('a calculation method refers to the tax table', 16, 1)
    ELSE
        DELETE FROM TaxMain WHERE Code IN (SELECT Code FROM deleted)
END
GO
-- engine: sqlite
CREATE TRIGGER Fiscal_Delete_TRG BEFORE DELETE ON Fiscal
WHEN EXISTS (SELECT 1 FROM PayrollInfoDetail WHERE UserCode = OLD.Code AND Type = 0)
BEGIN
    SELECT RAISE(ABORT, 'the payroll settings refer to the earning');
END
GO
-- engine: sqlserver
CREATE TRIGGER Fiscal_Delete_TRG ON Fiscal INSTEAD OF DELETE AS
BEGIN
    SET NOCOUNT ON
    IF EXISTS (SELECT 1 FROM deleted AS o INNER JOIN PayrollInfoDetail AS p ON p.UserCode = o.Code AND p.Type = 0)
        RAISERROR('the payroll settings refer to the earning', 16, 1)
    ELSE
        DELETE FROM Fiscal WHERE Code IN (SELECT Code FROM deleted)
END
GO
-- engine: sqlite
CREATE TRIGGER Deduction_Delete_TRG BEFORE DELETE ON Deduction
WHEN EXISTS (SELECT 1 FROM PayrollInfoDetail WHERE UserCode = OLD.Code AND Type = 1)
BEGIN
    SELECT RAISE(ABORT, 'the payroll settings refer to the deduction');
END
GO
-- engine: sqlserver
CREATE TRIGGER Deduction_Delete_TRG ON Deduction INSTEAD OF DELETE AS
BEGIN
    SET NOCOUNT ON
    IF EXISTS (SELECT 1 FROM deleted AS o INNER JOIN PayrollInfoDetail AS p ON p.UserCode = o.Code AND p.Type = 1)
        RAISERROR('the payroll settings refer to the deduction', 16, 1)
    ELSE
        DELETE FROM Deduction WHERE Code IN (SELECT Code FROM deleted)
END
GO
-- An editor that ended without closing leaves its working rows. The next opening of that employee copies his
-- saved rows again: those that are still there are passed over, so that no row stands twice.
-- engine: sqlite
CREATE TRIGGER tmpStaffFamily_Insert_TRG BEFORE INSERT ON tmpStaffFamily
WHEN EXISTS (SELECT 1 FROM tmpStaffFamily WHERE ID = NEW.ID AND StaffCode = NEW.StaffCode)
    AND EXISTS (SELECT 1 FROM StaffFamily WHERE ID = NEW.ID AND StaffCode = NEW.StaffCode)
BEGIN
    SELECT RAISE(IGNORE);
END
GO
-- engine: sqlserver
CREATE TRIGGER tmpStaffFamily_Insert_TRG ON tmpStaffFamily INSTEAD OF INSERT AS
BEGIN
    SET NOCOUNT ON
    INSERT INTO tmpStaffFamily (ID, StaffCode, Type, Name, Sex, InsuranceNumber, BirthDate, Death, DeathDate, Comment)
    SELECT i.ID, i.StaffCode, i.Type, i.Name, ISNULL(i.Sex, 0), i.InsuranceNumber, i.BirthDate, ISNULL(i.Death, 0),
        i.DeathDate, i.Comment
    FROM inserted AS i
    WHERE NOT EXISTS (SELECT 1 FROM tmpStaffFamily AS t WHERE t.ID = i.ID AND t.StaffCode = i.StaffCode)
        OR NOT EXISTS (SELECT 1 FROM StaffFamily AS f WHERE f.ID = i.ID AND f.StaffCode = i.StaffCode)
END
GO
-- Earnings and deductions share one space of codes: what two users create at once must not meet in it.
-- engine: sqlite
CREATE TRIGGER Fiscal_Insert_TRG BEFORE INSERT ON Fiscal
WHEN EXISTS (SELECT 1 FROM Deduction WHERE Code = NEW.Code)
BEGIN
    SELECT RAISE(ABORT, 'the code belongs to a deduction');
END
GO
-- engine: sqlite
CREATE TRIGGER Fiscal_Update_TRG BEFORE UPDATE OF Code ON Fiscal
WHEN EXISTS (SELECT 1 FROM Deduction WHERE Code = NEW.Code)
BEGIN
    SELECT RAISE(ABORT, 'the code belongs to a deduction');
END
GO
-- engine: sqlserver
CREATE TRIGGER Fiscal_Write_TRG ON Fiscal AFTER INSERT, UPDATE AS
BEGIN
    SET NOCOUNT ON
    IF EXISTS (SELECT 1 FROM inserted AS i INNER JOIN Deduction AS o ON o.Code = i.Code)
    BEGIN
        RAISERROR('the code belongs to a deduction', 16, 1)
        ROLLBACK TRANSACTION
    END
END
GO
-- engine: sqlite
CREATE TRIGGER Deduction_Insert_TRG BEFORE INSERT ON Deduction
WHEN EXISTS (SELECT 1 FROM Fiscal WHERE Code = NEW.Code)
BEGIN
    SELECT RAISE(ABORT, 'the code belongs to an earning');
END
GO
-- engine: sqlite
CREATE TRIGGER Deduction_Update_TRG BEFORE UPDATE OF Code ON Deduction
WHEN EXISTS (SELECT 1 FROM Fiscal WHERE Code = NEW.Code)
BEGIN
    SELECT RAISE(ABORT, 'the code belongs to an earning');
END
GO
-- engine: sqlserver
CREATE TRIGGER Deduction_Write_TRG ON Deduction AFTER INSERT, UPDATE AS
BEGIN
    SET NOCOUNT ON
    IF EXISTS (SELECT 1 FROM inserted AS i INNER JOIN Fiscal AS o ON o.Code = i.Code)
    BEGIN
        RAISERROR('the code belongs to an earning', 16, 1)
        ROLLBACK TRANSACTION
    END
END
GO
-- The next user of a code starts without the rights of the one before.
-- engine: sqlite
CREATE TRIGGER UserAccount_Delete_TRG AFTER DELETE ON UserAccount
BEGIN
    DELETE FROM UserRight WHERE UserCode = OLD.Code;
END
GO
-- engine: sqlserver
CREATE TRIGGER UserAccount_Delete_TRG ON UserAccount AFTER DELETE AS
BEGIN
    SET NOCOUNT ON
    DELETE FROM UserRight WHERE UserCode IN (SELECT Code FROM deleted)
END
GO
-- The next unique code of a detail, over all kinds of them. The embedded engine has it as a function of its own.
-- engine: sqlserver
CREATE FUNCTION dbo.GetUinqueCode_FNC (@Kind INT) RETURNS INT AS
BEGIN
    RETURN (SELECT ISNULL(MAX(DetailUniqueCode), 0) + 1 FROM Perinf)
END
GO
