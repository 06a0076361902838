-- Purpose: Headers of batches of the general ledger itself.
-- Kept by: the year-end closing (Private_YearEndBatch); the ledger shell names it as its table.
-- Columns: as those of JV.
IF OBJECT_ID('dbo.GLBatch', 'U') IS NULL
CREATE TABLE dbo.GLBatch (
    Batch varchar(15) NOT NULL,
    BatchDate datetime NULL,
    BatchType varchar(4) NOT NULL,
    Period varchar(6) NOT NULL,
    Particular varchar(500) NULL,
    Total money NOT NULL CONSTRAINT DF_GLBatch_Total DEFAULT (0),
    Encoder varchar(15) NULL,
    TransDate datetime NOT NULL CONSTRAINT DF_GLBatch_TransDate DEFAULT (GETDATE()),
    Posted bit NOT NULL CONSTRAINT DF_GLBatch_Posted DEFAULT (0),
    CONSTRAINT PK_GLBatch PRIMARY KEY (Batch)
);
