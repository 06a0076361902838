-- Purpose: Who opened or did what, in the order of the database.
-- Kept by: sp_SaveUserLogs.
-- Columns: SessionID is the connection that wrote the row; by it the other procedures know who works there.
IF OBJECT_ID('dbo.UserLog', 'U') IS NULL
CREATE TABLE dbo.UserLog (
    LogID int IDENTITY(1, 1) NOT NULL,
    LogDate datetime NOT NULL CONSTRAINT DF_UserLog_LogDate DEFAULT (GETDATE()),
    UserID varchar(15) NOT NULL,
    SystemName varchar(30) NOT NULL,
    LogText varchar(500) NOT NULL,
    SessionID int NOT NULL,
    CONSTRAINT PK_UserLog PRIMARY KEY (LogID),
    INDEX IX_UserLog_Date (LogDate, UserID),
    INDEX IX_UserLog_Session (SessionID, LogID)
);
