-- Purpose: The one row that says where the audit log ends, so that rows cut off at its end are noticed.
-- Kept by: sp_SaveAuditLog.
-- Columns: LastID and LastHash are those of the newest row of AuditLog.
IF OBJECT_ID('dbo.AuditHead', 'U') IS NULL
CREATE TABLE dbo.AuditHead (
    OneRow bit NOT NULL CONSTRAINT DF_AuditHead_OneRow DEFAULT (1),
    LastID int NOT NULL,
    LastHash varchar(64) NOT NULL,
    CONSTRAINT PK_AuditHead PRIMARY KEY (OneRow),
    CONSTRAINT CK_AuditHead_OneRow CHECK (OneRow = 1)
);
