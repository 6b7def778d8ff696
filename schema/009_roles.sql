-- Names that no user has wait after wrong passwords as users do, so that the wait does not tell them apart. A name counts
-- in the row that its hash names: the table never grows.
CREATE TABLE UnknownNameTry (
    Bucket INT NOT NULL CONSTRAINT PK_UnknownNameTry PRIMARY KEY,
    FailedCount INT NOT NULL,
    NextTry NVARCHAR(19) NULL
)
GO
INSERT INTO UnknownNameTry (Bucket, FailedCount) VALUES
    (0, 0), (1, 0), (2, 0), (3, 0), (4, 0), (5, 0), (6, 0), (7, 0), (8, 0), (9, 0), (10, 0), (11, 0), (12, 0),
    (13, 0), (14, 0), (15, 0), (16, 0), (17, 0), (18, 0), (19, 0), (20, 0), (21, 0), (22, 0), (23, 0), (24, 0),
    (25, 0), (26, 0), (27, 0), (28, 0), (29, 0), (30, 0), (31, 0), (32, 0), (33, 0), (34, 0), (35, 0), (36, 0),
    (37, 0), (38, 0), (39, 0), (40, 0), (41, 0), (42, 0), (43, 0), (44, 0), (45, 0), (46, 0), (47, 0), (48, 0),
    (49, 0), (50, 0), (51, 0), (52, 0), (53, 0), (54, 0), (55, 0), (56, 0), (57, 0), (58, 0), (59, 0), (60, 0),
    (61, 0), (62, 0), (63, 0), (64, 0), (65, 0), (66, 0), (67, 0), (68, 0), (69, 0), (70, 0), (71, 0), (72, 0),
    (73, 0), (74, 0), (75, 0), (76, 0), (77, 0), (78, 0), (79, 0), (80, 0), (81, 0), (82, 0), (83, 0), (84, 0),
    (85, 0), (86, 0), (87, 0), (88, 0), (89, 0), (90, 0), (91, 0), (92, 0), (93, 0), (94, 0), (95, 0), (96, 0),
    (97, 0), (98, 0), (99, 0), (100, 0), (101, 0), (102, 0), (103, 0), (104, 0), (105, 0), (106, 0), (107, 0),
    (108, 0), (109, 0), (110, 0), (111, 0), (112, 0), (113, 0), (114, 0), (115, 0), (116, 0), (117, 0),
    (118, 0), (119, 0), (120, 0), (121, 0), (122, 0), (123, 0), (124, 0), (125, 0), (126, 0), (127, 0),
    (128, 0), (129, 0), (130, 0), (131, 0), (132, 0), (133, 0), (134, 0), (135, 0), (136, 0), (137, 0),
    (138, 0), (139, 0), (140, 0), (141, 0), (142, 0), (143, 0), (144, 0), (145, 0), (146, 0), (147, 0),
    (148, 0), (149, 0), (150, 0), (151, 0), (152, 0), (153, 0), (154, 0), (155, 0), (156, 0), (157, 0),
    (158, 0), (159, 0), (160, 0), (161, 0), (162, 0), (163, 0), (164, 0), (165, 0), (166, 0), (167, 0),
    (168, 0), (169, 0), (170, 0), (171, 0), (172, 0), (173, 0), (174, 0), (175, 0), (176, 0), (177, 0),
    (178, 0), (179, 0), (180, 0), (181, 0), (182, 0), (183, 0), (184, 0), (185, 0), (186, 0), (187, 0),
    (188, 0), (189, 0), (190, 0), (191, 0), (192, 0), (193, 0), (194, 0), (195, 0), (196, 0), (197, 0),
    (198, 0), (199, 0), (200, 0), (201, 0), (202, 0), (203, 0), (204, 0), (205, 0), (206, 0), (207, 0),
    (208, 0), (209, 0), (210, 0), (211, 0), (212, 0), (213, 0), (214, 0), (215, 0), (216, 0), (217, 0),
    (218, 0), (219, 0), (220, 0), (221, 0), (222, 0), (223, 0), (224, 0), (225, 0), (226, 0), (227, 0),
    (228, 0), (229, 0), (230, 0), (231, 0), (232, 0), (233, 0), (234, 0), (235, 0), (236, 0), (237, 0),
    (238, 0), (239, 0), (240, 0), (241, 0), (242, 0), (243, 0), (244, 0), (245, 0), (246, 0), (247, 0),
    (248, 0), (249, 0), (250, 0), (251, 0), (252, 0), (253, 0), (254, 0), (255, 0)
GO
-- The database's clock in UTC, as the waits are kept. The embedded engine has it as a function of its own.
-- engine: sqlserver
CREATE FUNCTION dbo.UtcNow_FNC() RETURNS NVARCHAR(19) AS
BEGIN
    RETURN CONVERT(NVARCHAR(19), GETUTCDATE(), 126)
END
GO
-- Roles: named sets of rights. Role 1 is the administrator's: it holds every right without naming one.
CREATE TABLE UserRole (
    Code INT NOT NULL CONSTRAINT PK_UserRole PRIMARY KEY,
    Name NVARCHAR(50) NOT NULL CONSTRAINT UQ_UserRole_Name UNIQUE
)
GO
CREATE TABLE UserRoleRight (
    RoleCode INT NOT NULL CONSTRAINT FK_UserRoleRight_UserRole REFERENCES UserRole (Code) ON DELETE CASCADE,
    SoftwarePart INT NOT NULL,
    Permission INT NOT NULL,
    CONSTRAINT PK_UserRoleRight PRIMARY KEY (RoleCode, SoftwarePart, Permission)
)
GO
CREATE TABLE UserRoleMember (
    UserCode INT NOT NULL CONSTRAINT FK_UserRoleMember_UserAccount REFERENCES UserAccount (Code) ON DELETE CASCADE,
    RoleCode INT NOT NULL CONSTRAINT FK_UserRoleMember_UserRole REFERENCES UserRole (Code) ON DELETE CASCADE,
    CONSTRAINT PK_UserRoleMember PRIMARY KEY (UserCode, RoleCode)
)
GO
CREATE INDEX IX_UserRoleMember_RoleCode ON UserRoleMember (RoleCode)
GO
INSERT INTO UserRole (Code, Name) VALUES (1, N'مدیر سیستم'), (2, N'رئیس'), (3, N'کارمند ثبت'), (4, N'حسابرس')
GO
-- The chief may do everything, the clerk all but delete and the settings' second page, the auditor look and print.
INSERT INTO UserRoleRight (RoleCode, SoftwarePart, Permission) VALUES
    (2, 801, 6), (2, 801, 8011), (2, 813, 6), (2, 813, 1), (2, 813, 2), (2, 813, 3), (2, 813, 4), (2, 802, 6),
    (2, 802, 1), (2, 802, 2), (2, 802, 3), (2, 802, 4), (2, 803, 6), (2, 803, 1), (2, 803, 2), (2, 803, 3),
    (2, 803, 4), (2, 806, 6), (2, 806, 1), (2, 806, 2), (2, 806, 3), (2, 806, 8062), (2, 806, 4), (2, 804, 6),
    (2, 804, 1), (2, 804, 2), (2, 804, 3), (2, 804, 4), (2, 805, 6), (2, 805, 1), (2, 805, 2), (2, 805, 3),
    (2, 805, 4), (2, 815, 1), (2, 815, 2), (2, 815, 3), (2, 816, 1), (2, 816, 2), (2, 816, 3), (2, 817, 1),
    (2, 817, 2), (2, 817, 3), (2, 101, 1), (2, 101, 2), (2, 101, 3),
    (2, 815, 4), (2, 816, 4), (2, 817, 4), (2, 101, 4),
    (3, 801, 6), (3, 813, 6), (3, 813, 1), (3, 813, 2), (3, 813, 4), (3, 802, 6), (3, 802, 1), (3, 802, 2),
    (3, 802, 4), (3, 803, 6), (3, 803, 1), (3, 803, 2), (3, 803, 4), (3, 806, 6), (3, 806, 1), (3, 806, 2),
    (3, 806, 8062), (3, 806, 4), (3, 804, 6), (3, 804, 1), (3, 804, 2), (3, 804, 4), (3, 805, 6), (3, 805, 1),
    (3, 805, 2), (3, 805, 4), (3, 815, 1), (3, 815, 2), (3, 816, 1), (3, 816, 2), (3, 817, 1), (3, 817, 2),
    (3, 101, 1), (3, 101, 2), (3, 815, 4), (3, 816, 4), (3, 817, 4), (3, 101, 4),
    (4, 801, 6), (4, 813, 6), (4, 813, 4), (4, 802, 6), (4, 802, 4), (4, 803, 6), (4, 803, 4), (4, 806, 6),
    (4, 806, 8062), (4, 806, 4), (4, 804, 6), (4, 804, 4), (4, 805, 6), (4, 805, 4),
    (4, 815, 4), (4, 816, 4), (4, 817, 4), (4, 101, 4)
GO
-- Where each right of a user comes from: his own, or the name of a role.
CREATE VIEW UserRightSource_VW AS
SELECT UserCode, SoftwarePart, Permission, N'خود' AS Source FROM UserRight
UNION ALL
SELECT m.UserCode, r.SoftwarePart, r.Permission, o.Name AS Source
FROM UserRoleMember AS m
INNER JOIN UserRoleRight AS r ON r.RoleCode = m.RoleCode
INNER JOIN UserRole AS o ON o.Code = m.RoleCode
