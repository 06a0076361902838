-- Purpose: What happened to the months of the books: closed, reopened, prepared, opened as a year.
-- Kept by: the closing procedures.
-- Columns: Action is CLOSE, REOPEN, PREPARE, OPENING or YEAREND; Lines counts ledger rows brought in or taken out;
--   SessionID is the connection.
IF OBJECT_ID('dbo.BookCloseLog', 'U') IS NULL
CREATE TABLE dbo.BookCloseLog (
    LogID int IDENTITY(1, 1) NOT NULL,
    Book varchar(4) NOT NULL,
    Period varchar(6) NOT NULL,
    Action varchar(10) NOT NULL,
    ActionAt datetime NOT NULL CONSTRAINT DF_BookCloseLog_ActionAt DEFAULT (GETDATE()),
    ActionBy varchar(15) NOT NULL,
    SessionID int NOT NULL CONSTRAINT DF_BookCloseLog_SessionID DEFAULT (@@SPID),
    Lines int NOT NULL CONSTRAINT DF_BookCloseLog_Lines DEFAULT (0),
    Reason varchar(200) NOT NULL CONSTRAINT DF_BookCloseLog_Reason DEFAULT (''),
    CONSTRAINT PK_BookCloseLog PRIMARY KEY (LogID),
    CONSTRAINT CK_BookCloseLog_Action CHECK (Action IN ('CLOSE', 'REOPEN', 'PREPARE', 'OPENING', 'YEAREND')),
    INDEX IX_BookCloseLog_Book (Book, Period, LogID)
);
