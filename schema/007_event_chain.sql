-- The lines of the event log hang together: each one's link is made of its contents and the link before, so that a line
-- that was changed or taken out is seen. The head holds the last link and the number of lines that hang together; who
-- adds a line changes the head first, and waits there for others.
ALTER TABLE UserEvent ADD Link NVARCHAR(64) NULL
GO
CREATE TABLE UserEventHead (
    ID INT NOT NULL CONSTRAINT PK_UserEventHead PRIMARY KEY,
    Link NVARCHAR(64) NOT NULL,
    LineCount INT NOT NULL
)
GO
INSERT INTO UserEventHead (ID, Link, LineCount) VALUES (1, N'', 0)
GO
-- SHA-256 of both texts, in hexadecimal digits. The embedded engine has it as a function of its own.
-- engine: sqlserver
CREATE FUNCTION dbo.EventLink_FNC (@Before NVARCHAR(64), @Contents NVARCHAR(64)) RETURNS NVARCHAR(64) AS
BEGIN
    RETURN LOWER(CONVERT(VARCHAR(64), HASHBYTES('SHA2_256', CONVERT(VARCHAR(128), @Before + @Contents)), 2))
END
GO
