-- Purpose: Headers of the accounts receivable book, one row a batch.
-- Kept by: sp_Insert_AR; the entry screen deletes a batch with its lines.
-- Columns: BatchType is AR or the kind of a hospital upload; ReportDate and ReportType (IP, OP) name the hospital report that a
--   copy came from.
IF OBJECT_ID('dbo.AR', 'U') IS NULL
CREATE TABLE dbo.AR (
    Batch varchar(15) NOT NULL,
    BatchDate datetime NULL,
    BatchType varchar(4) NOT NULL,
    Period varchar(6) NOT NULL,
    Particular varchar(500) NULL,
    Total money NOT NULL CONSTRAINT DF_AR_Total DEFAULT (0),
    Debits money NOT NULL CONSTRAINT DF_AR_Debits DEFAULT (0),
    Credits money NOT NULL CONSTRAINT DF_AR_Credits DEFAULT (0),
    Encoder varchar(15) NULL,
    TransDate datetime NOT NULL CONSTRAINT DF_AR_TransDate DEFAULT (GETDATE()),
    EditEncoder varchar(15) NULL,
    EditTransDate datetime NULL,
    ReportDate datetime NULL,
    ReportType varchar(2) NULL,
    Posted bit NULL CONSTRAINT DF_AR_Posted DEFAULT (0),
    PostedBy varchar(15) NULL,
    PostedDate datetime NULL,
    CONSTRAINT PK_AR PRIMARY KEY CLUSTERED (Batch),
    INDEX IX_AR_Period (Period, Posted),
    INDEX IX_AR_Date (BatchDate, Batch),
    INDEX IX_AR_Report (ReportDate, ReportType)
);
