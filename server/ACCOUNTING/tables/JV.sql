-- Purpose: Headers of the journal voucher book, one row a batch; a batch is cancelled, never removed.
-- Kept by: sp_Insert_JV; the posting list sets Posted, the entry screen sets Cancelled.
-- Columns: BatchType is JV or YE (year-end adjustment), or the kind of a hospital upload; Posted is a checkpoint and moves no
--   figures; TransDate is the first save.
IF OBJECT_ID('dbo.JV', 'U') IS NULL
CREATE TABLE dbo.JV (
    Batch varchar(15) NOT NULL,
    BatchDate datetime NULL,
    BatchType varchar(4) NOT NULL,
    Period varchar(6) NOT NULL,
    Particular varchar(500) NULL,
    Total money NOT NULL CONSTRAINT DF_JV_Total DEFAULT (0),
    Debits money NOT NULL CONSTRAINT DF_JV_Debits DEFAULT (0),
    Credits money NOT NULL CONSTRAINT DF_JV_Credits DEFAULT (0),
    Encoder varchar(15) NULL,
    TransDate datetime NOT NULL CONSTRAINT DF_JV_TransDate DEFAULT (GETDATE()),
    EditEncoder varchar(15) NULL,
    EditTransDate datetime NULL,
    Posted bit NOT NULL CONSTRAINT DF_JV_Posted DEFAULT (0),
    PostedBy varchar(15) NULL,
    PostedDate datetime NULL,
    Cancelled bit NOT NULL CONSTRAINT DF_JV_Cancelled DEFAULT (0),
    CONSTRAINT PK_JV PRIMARY KEY CLUSTERED (Batch),
    INDEX IX_JV_Period (Period, Posted),
    INDEX IX_JV_Date (BatchDate, Batch)
);
