-- Purpose: Lines of batches of the general ledger itself.
-- Kept by: the year-end closing (Private_YearEndBatch); the ledger shell names it as its detail table.
-- Columns: as those of JVDT.
IF OBJECT_ID('dbo.Batchdet', 'U') IS NULL
CREATE TABLE dbo.Batchdet (
    Batch varchar(15) NOT NULL,
    SeqNo int NOT NULL,
    Period varchar(6) NOT NULL,
    Code varchar(15) NOT NULL,
    Dept varchar(10) NOT NULL CONSTRAINT DF_Batchdet_Dept DEFAULT (''),
    BatchDate datetime NULL,
    Description varchar(200) NULL,
    Debit money NOT NULL CONSTRAINT DF_Batchdet_Debit DEFAULT (0),
    Credit money NOT NULL CONSTRAINT DF_Batchdet_Credit DEFAULT (0),
    Posted int NOT NULL CONSTRAINT DF_Batchdet_Posted DEFAULT (0),
    CONSTRAINT PK_Batchdet PRIMARY KEY (Batch, SeqNo)
);
