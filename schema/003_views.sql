-- The views behind the lists. The columns of their one table are written through to it; the rest is shown only.
-- Titles from other tables are sub-selects: a list that reads keys only then needs nothing but the index of keys.
CREATE VIEW CalcMethod_VW AS
SELECT
    m.Code, m.Title, m.StaffIns, m.EmployerIns, m.DailyIns, m.OverTime, m.TaxMainCode, m.DecTax, m.Maskok,
    m.LeaveCeil, m.[OutPut], m.Comment, m.Insurance, m.Tax, m.BedBes, m.Loan, m.OverDis, m.Entrance, m.[Exit],
    (SELECT t.Title FROM TaxMain AS t WHERE t.Code = m.TaxMainCode) AS TaxTitle,
    CAST(m.Maskok AS NVARCHAR(1)) AS MaskokTitle
FROM CalcMethod AS m
GO
CREATE VIEW staff_VW AS
SELECT
    s.Code, s.StaffGroup, s.PersonnelCode, s.InsuranceNumber, s.CardNumber, s.NationalID, s.Sex,
    s.FatherName, s.IDNumber, s.BirthDate, s.BirthPlace, s.Department, s.Degree, s.Major,
    s.Military, s.IsMarried, s.Picture, s.FingerPrint, s.AccountNumber, s.BankTitle, s.CoDate,
    s.Job, s.Comment, s.Name, s.LastName, s.Tel1, s.Tel2, s.Fax, s.Mob, s.Add1, s.Add2, s.Email,
    s.LeaveDate, s.Employment, s.PostCode, s.Category, s.FiscalExemption, s.[National], s.Insurance,
    s.IssuePlace, s.IssueDate, s.JobCode, s.JobGroup, s.CreatedTime, s.ModifiedTime, s.CreatedDate,
    s.ModifiedDate, s.UserCreated, s.UserModified,
    CAST(ISNULL(s.Name, N'') + N' ' + ISNULL(s.LastName, N'') AS NVARCHAR(151)) AS fullnameTitle,
    (SELECT g.Name FROM StaffGroup AS g WHERE g.Code = s.StaffGroup) AS StaffGroupTitle,
    CASE s.Sex
        WHEN 0 THEN N'مرد'
        WHEN 1 THEN N'زن'
    END AS SexTitle,
    CASE s.IsMarried
        WHEN 0 THEN N'مجرد'
        WHEN 1 THEN N'متاهل'
    END AS IsMarriedTitle,
    CASE s.Military
        WHEN 0 THEN N'کارت پايان خدمت'
        WHEN 1 THEN N'کارت معافيت پزشکي'
        WHEN 2 THEN N'کارت معافيت کفالت'
        WHEN 3 THEN N'کارت معافيت موقت'
        WHEN 4 THEN N'مشمول'
        WHEN 5 THEN N'غيره'
        WHEN 6 THEN N'مشخص نشده'
    END AS MilitaryTitle,
    -- As a whole of its width: there are servers that give a CASE the narrow type of their code page, which has no ی.
    CAST(CASE s.Degree
        WHEN 0 THEN N'بي سواد و کم سواد'
        WHEN 1 THEN N'زیر دیپلم'
        WHEN 2 THEN N'ديپلم'
        WHEN 3 THEN N'فوق ديپلم'
        WHEN 4 THEN N'ليسانس'
        WHEN 5 THEN N'فوق ليسانس'
        WHEN 6 THEN N'دکترا'
        WHEN 7 THEN N'فوق دکترا'
    END AS NVARCHAR(20)) AS DegreeTitle,
    CAST(CAST(s.Code AS NVARCHAR(30)) + N' ' + ISNULL(s.Name, N'') + N' ' + ISNULL(s.LastName, N'')
        AS NVARCHAR(181)) AS CodeFullName,
    s.CreatedDate + N' ' + s.CreatedTime AS CreatedDateTime,
    s.ModifiedDate + N' ' + s.ModifiedTime AS ModifiedDateTime
FROM Staff AS s
GO
-- PayrollCode: the number of the settings' fixed item that is linked to this one. An item linked to several shows
-- the one that bars it from being handed out (1, 6, 7, 8) first.
CREATE VIEW Fiscal_vw AS
SELECT
    f.Code, f.Title, f.Tax, f.Insurance, f.Comment, f.CalcType, f.GrpCode, f.Kol, f.Moin, f.Tafzili,
    ISNULL((SELECT MIN(p.Code) FROM PayrollInfoDetail AS p
            WHERE p.UserCode = f.Code AND p.Type = 0 AND p.Code IN (1, 6, 7, 8)),
        ISNULL((SELECT MIN(p.Code) FROM PayrollInfoDetail AS p
                WHERE p.UserCode = f.Code AND p.Type = 0), 0)) AS PayrollCode,
    CASE f.Insurance
        WHEN 0 THEN N'خير'
        WHEN 1 THEN N'بلي'
    END AS InsuranceTitle,
    CASE f.Tax
        WHEN 0 THEN N'خير'
        WHEN 1 THEN N'بلي'
    END AS TaxTitle,
    CASE f.CalcType
        WHEN 0 THEN N'مبلغ'
        WHEN 1 THEN N'درصد'
        WHEN 2 THEN N'ماهيانه'
        WHEN 3 THEN N'ثابت'
    END AS CalcTitle,
    f.Cost,
    CAST(CAST(f.Code AS NVARCHAR(30)) + N' ' + ISNULL(f.Title, N'') AS NVARCHAR(80)) AS CodeName
FROM Fiscal AS f
GO
-- Deductions have no monthly basis: their 2 is what an earning's 3 is.
CREATE VIEW Deduction_vw AS
SELECT
    d.Code, d.Title, d.Comment, d.CalcType, d.GrpCode, d.Kol, d.Moin, d.Tafzili,
    ISNULL((SELECT MIN(p.Code) FROM PayrollInfoDetail AS p
            WHERE p.UserCode = d.Code AND p.Type = 1 AND p.Code IN (1, 6, 7, 8)),
        ISNULL((SELECT MIN(p.Code) FROM PayrollInfoDetail AS p
                WHERE p.UserCode = d.Code AND p.Type = 1), 0)) AS PayrollCode,
    CASE d.CalcType
        WHEN 0 THEN N'مبلغ'
        WHEN 1 THEN N'درصد'
        WHEN 2 THEN N'ثابت'
    END AS CalcTitle,
    d.Cost,
    CAST(CAST(d.Code AS NVARCHAR(30)) + N' ' + ISNULL(d.Title, N'') AS NVARCHAR(80)) AS CodeName
FROM Deduction AS d
GO
