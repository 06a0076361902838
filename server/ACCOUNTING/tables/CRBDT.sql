-- Purpose: Lines of the cash receipts book.
-- Kept by: the entry screen, which replaces a batch's lines at each save; uploads.
-- Columns: SeqNo counts from 1 within the batch; SubCode is the vendor of a payable line. Lines are written before their header;
--   checks look for orphans.
IF OBJECT_ID('dbo.CRBDT', 'U') IS NULL
CREATE TABLE dbo.CRBDT (
    Batch varchar(15) NOT NULL,
    SeqNo int NOT NULL,
    Period varchar(6) NOT NULL,
    Code varchar(15) NOT NULL,
    Dept varchar(10) NOT NULL CONSTRAINT DF_CRBDT_Dept DEFAULT (''),
    BatchDate datetime NULL,
    Description varchar(200) NULL,
    Debit money NOT NULL CONSTRAINT DF_CRBDT_Debit DEFAULT (0),
    Credit money NOT NULL CONSTRAINT DF_CRBDT_Credit DEFAULT (0),
    SubCode varchar(15) NULL,
    Posted int NOT NULL CONSTRAINT DF_CRBDT_Posted DEFAULT (0),
    CONSTRAINT PK_CRBDT PRIMARY KEY (Batch, SeqNo),
    INDEX IX_CRBDT_Code (Code, Period)
);
