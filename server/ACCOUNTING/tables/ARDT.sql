-- Purpose: Lines of the accounts receivable book.
-- Kept by: the entry screen, which replaces a batch's lines at each save; uploads.
-- Columns: SeqNo counts from 1 within the batch. Lines are written before their header; checks look for orphans.
IF OBJECT_ID('dbo.ARDT', 'U') IS NULL
CREATE TABLE dbo.ARDT (
    Batch varchar(15) NOT NULL,
    SeqNo int NOT NULL,
    Period varchar(6) NOT NULL,
    Code varchar(15) NOT NULL,
    Dept varchar(10) NOT NULL CONSTRAINT DF_ARDT_Dept DEFAULT (''),
    BatchDate datetime NULL,
    Description varchar(200) NULL,
    Debit money NOT NULL CONSTRAINT DF_ARDT_Debit DEFAULT (0),
    Credit money NOT NULL CONSTRAINT DF_ARDT_Credit DEFAULT (0),
    Posted int NOT NULL CONSTRAINT DF_ARDT_Posted DEFAULT (0),
    CONSTRAINT PK_ARDT PRIMARY KEY (Batch, SeqNo),
    INDEX IX_ARDT_Code (Code, Period)
);
