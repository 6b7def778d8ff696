-- Lists are printed, copied and saved as files only with the right to print (4) on their part. Until now whoever could see
-- a list could take it out, and keeps that: those who may open the part (6), and for groups, which have no right to be
-- opened, those who hold any right on them.
INSERT INTO UserRight (UserCode, SoftwarePart, Permission)
SELECT DISTINCT r.UserCode, r.SoftwarePart, 4 FROM UserRight r
WHERE ((r.Permission = 6 AND r.SoftwarePart IN (802, 803, 804, 805, 806, 813))
       OR r.SoftwarePart IN (101, 815, 816, 817))
  AND NOT EXISTS (SELECT Permission FROM UserRight h
                  WHERE h.UserCode = r.UserCode AND h.SoftwarePart = r.SoftwarePart AND h.Permission = 4)
GO
-- The choice of deductions opens to those who may open earnings (804), too.
INSERT INTO UserRight (UserCode, SoftwarePart, Permission)
SELECT r.UserCode, 805, 4 FROM UserRight r
WHERE r.SoftwarePart = 804 AND r.Permission = 6
  AND NOT EXISTS (SELECT Permission FROM UserRight h
                  WHERE h.UserCode = r.UserCode AND h.SoftwarePart = 805 AND h.Permission = 4)
GO
