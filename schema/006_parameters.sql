-- The suite's stored settings, by number.
CREATE TABLE CustomParam (
    Number INT NOT NULL CONSTRAINT PK_CustomParam PRIMARY KEY,
    Value NVARCHAR(400) NULL
)
GO
