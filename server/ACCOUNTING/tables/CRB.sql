-- Purpose: Headers of the cash receipts book, one row a batch.
-- Kept by: sp_Insert_CRB; the entry screen deletes a batch with its lines.
-- Columns: BatchType is CR or the kind of a hospital upload; ReportDate names the hospital report that a copy came from.
IF OBJECT_ID('dbo.CRB', 'U') IS NULL
CREATE TABLE dbo.CRB (
    Batch varchar(15) NOT NULL,
    BatchDate datetime NULL,
    BatchType varchar(4) NOT NULL,
    Period varchar(6) NOT NULL,
    Particular varchar(500) NULL,
    Total money NOT NULL CONSTRAINT DF_CRB_Total DEFAULT (0),
    Debits money NOT NULL CONSTRAINT DF_CRB_Debits DEFAULT (0),
    Credits money NOT NULL CONSTRAINT DF_CRB_Credits DEFAULT (0),
    Encoder varchar(15) NULL,
    TransDate datetime NOT NULL CONSTRAINT DF_CRB_TransDate DEFAULT (GETDATE()),
    EditEncoder varchar(15) NULL,
    EditTransDate datetime NULL,
    ReportDate datetime NULL,
    Posted bit NULL CONSTRAINT DF_CRB_Posted DEFAULT (0),
    PostedBy varchar(15) NULL,
    PostedDate datetime NULL,
    CONSTRAINT PK_CRB PRIMARY KEY CLUSTERED (Batch),
    INDEX IX_CRB_Period (Period, Posted),
    INDEX IX_CRB_Date (BatchDate, Batch),
    INDEX IX_CRB_Report (ReportDate)
);
