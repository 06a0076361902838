-- Purpose: The CR book's lines as day figures, one row a line, for the daily reports.
-- Kept by: the entry screen, together with CRBDT.
-- Columns: as those of tbDailyCharges.
IF OBJECT_ID('dbo.tbDailyCollection', 'U') IS NULL
CREATE TABLE dbo.tbDailyCollection (
    DailyID int IDENTITY(1, 1) NOT NULL,
    Batch varchar(15) NOT NULL,
    RefNum varchar(30) NULL,
    Period varchar(6) NOT NULL,
    Code varchar(15) NOT NULL,
    DatePosted datetime NULL,
    TransDate datetime NULL,
    Side varchar(1) NOT NULL,
    DRCR varchar(1) NOT NULL,
    DrCode varchar(15) NULL,
    CrCode varchar(15) NULL,
    Amount money NOT NULL,
    GLGroup varchar(10) NULL,
    CONSTRAINT PK_tbDailyCollection PRIMARY KEY (DailyID),
    CONSTRAINT CK_tbDailyCollection_Side CHECK (Side IN ('D', 'C')),
    CONSTRAINT CK_tbDailyCollection_Amount CHECK (Amount >= 0),
    INDEX IX_tbDailyCollection_Batch (Batch),
    INDEX IX_tbDailyCollection_Date (TransDate, Code)
);
