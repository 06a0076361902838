-- Purpose: The ledger: the lines of every book and month that was closed, and the opening figures of years.
-- Kept by: Private_CloseBook, sp_UnpostBook, sp_PostBegBaltoGL, Private_PostOpening; nothing else writes it.
-- Columns: BatchType is the book (AP, CD, CR, AR, JV) or BB for opening figures; DocType is the batch's own type (YE among JV);
--   Batch is the batch or voucher; a month closed without batches holds one row without account and amount.
IF OBJECT_ID('dbo.GL', 'U') IS NULL
CREATE TABLE dbo.GL (
    Period varchar(6) NOT NULL,
    BatchType varchar(4) NOT NULL,
    Batch varchar(20) NOT NULL,
    SeqNo int NOT NULL,
    Code varchar(15) NOT NULL,
    Dept varchar(10) NOT NULL CONSTRAINT DF_GL_Dept DEFAULT (''),
    BatchDate datetime NULL,
    Description varchar(200) NULL,
    Debit money NOT NULL CONSTRAINT DF_GL_Debit DEFAULT (0),
    Credit money NOT NULL CONSTRAINT DF_GL_Credit DEFAULT (0),
    DocType varchar(4) NULL,
    SubCode varchar(15) NULL,
    CONSTRAINT PK_GL PRIMARY KEY (Period, BatchType, Batch, SeqNo),
    INDEX IX_GL_Code (Code, Period)
);
