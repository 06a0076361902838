-- Purpose: What was done to documents: rows are only ever added, each chained to the one before by a hash.
-- Kept by: sp_SaveAuditLog.
-- Columns: LogID counts without gaps; PrevHash is the hash of the row before (empty for the first); Hash is the SHA-256, in
--   hexadecimal, over PrevHash and the row's own values (fn_AuditHash).
IF OBJECT_ID('dbo.AuditLog', 'U') IS NULL
CREATE TABLE dbo.AuditLog (
    LogID int NOT NULL,
    LogDate datetime NOT NULL,
    UserID varchar(15) NOT NULL,
    Book varchar(20) NOT NULL,
    Reference varchar(60) NOT NULL,
    Extra varchar(200) NOT NULL,
    LogText varchar(500) NOT NULL,
    PrevHash varchar(64) NOT NULL,
    Hash varchar(64) NOT NULL,
    CONSTRAINT PK_AuditLog PRIMARY KEY (LogID),
    INDEX IX_AuditLog_Date (LogDate),
    INDEX IX_AuditLog_Reference (Book, Reference)
);
