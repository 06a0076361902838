-- Purpose: The AR book's lines as day figures, one row a line, for the daily reports.
-- Kept by: the entry screen, together with ARDT.
-- Columns: RefNum is the book and batch; Side and DRCR are D or C; Amount is never negative on its side; DrCode or CrCode holds
--   the account.
IF OBJECT_ID('dbo.tbDailyCharges', 'U') IS NULL
CREATE TABLE dbo.tbDailyCharges (
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
    CONSTRAINT PK_tbDailyCharges PRIMARY KEY (DailyID),
    CONSTRAINT CK_tbDailyCharges_Side CHECK (Side IN ('D', 'C')),
    CONSTRAINT CK_tbDailyCharges_Amount CHECK (Amount >= 0),
    INDEX IX_tbDailyCharges_Batch (Batch),
    INDEX IX_tbDailyCharges_Date (TransDate, Code)
);
