-- The rows that the programs only change: the group of everything, the settings, the settings' fixed items.
INSERT INTO StaffGroup (Code, Name) VALUES (0, N'کليه کارمندان')
GO
INSERT INTO FiscalGrp (Code, Name) VALUES (0, N'کليه گروه ها')
GO
INSERT INTO DeductionGrp (Code, Name) VALUES (0, N'کليه گروه ها')
GO
-- Reading takes the settings by position, writing by code: no other rows may stand before them.
INSERT INTO PayrollInfo (Code, Value) VALUES
    (6, N''), (7, N''), (8, N''), (9, N''), (10, N''), (11, N''), (12, N''), (13, N''), (14, N''),
    (15, N''), (16, N''), (17, N''), (18, N''), (19, N''), (20, N''), (21, N''), (22, N''), (23, N''),
    (24, N''), (25, N''), (26, N''), (27, N''), (28, N''), (29, N''), (30, N'')
GO
-- One by one: each takes the next ID, and the number of an item is its ID. 16 is the insurance deduction, 17 the
-- tax deduction.
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (0, 1, N'حقوق پایه')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (0, 2, N'پایه سنوات')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (0, 3, N'حق مسکن')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (0, 4, N'کمک هزینه اقلام مصرفی خانوار')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (0, 5, N'حق اولاد')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (0, 6, N'اضافه کاری')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (0, 7, N'فوق العاده ماموریت')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (1, 8, N'کسر کار')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (0, 9, N'شب کاری')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (0, 10, N'نوبت کاری صبح و عصر')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (0, 11, N'نوبت کاری صبح و عصر و شب')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (1, 12, N'غیبت')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (1, 13, N'مساعده')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (1, 14, N'قسط وام')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (0, 15, N'عیدی')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (1, 16, N'حق بیمه سهم کارمند')
GO
INSERT INTO PayrollInfoDetail (Type, Code, Title) VALUES (1, 17, N'مالیات حقوق')
GO
