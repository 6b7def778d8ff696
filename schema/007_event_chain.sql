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
-- SHA-256 of both texts, in hexadecimal digits (written out one by one: not every server converts bytes to them). The
-- embedded engine has it as a function of its own.
-- engine: sqlserver
CREATE FUNCTION dbo.EventLink_FNC (@Before NVARCHAR(64), @Contents NVARCHAR(64)) RETURNS NVARCHAR(64) AS
BEGIN
    DECLARE @Hash VARBINARY(32), @Place INT, @Byte INT, @Link NVARCHAR(64)
    SET @Hash = HASHBYTES('SHA2_256', CONVERT(VARCHAR(128), @Before + @Contents))
    SET @Place = 1
    SET @Link = N''
    WHILE @Place <= 32
    BEGIN
        SET @Byte = CAST(SUBSTRING(@Hash, @Place, 1) AS INT)
        SET @Link = @Link + SUBSTRING(N'0123456789abcdef', @Byte / 16 + 1, 1) + SUBSTRING(N'0123456789abcdef', @Byte % 16 + 1, 1)
        SET @Place = @Place + 1
    END
    RETURN @Link
END
GO
