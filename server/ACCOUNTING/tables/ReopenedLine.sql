-- Purpose: The ledger lines that the last reopening of a book and month took out, so that what changed since the close can be shown.
-- Kept by: sp_UnpostBook, which replaces the lines of an earlier reopening of the same book and month.
-- Columns: as in GL.
IF OBJECT_ID('dbo.ReopenedLine', 'U') IS NULL
CREATE TABLE dbo.ReopenedLine (
    Book varchar(4) NOT NULL,
    Period varchar(6) NOT NULL,
    Batch varchar(20) NOT NULL,
    SeqNo int NOT NULL,
    Code varchar(15) NOT NULL,
    Dept varchar(10) NOT NULL CONSTRAINT DF_ReopenedLine_Dept DEFAULT (''),
    Debit money NOT NULL CONSTRAINT DF_ReopenedLine_Debit DEFAULT (0),
    Credit money NOT NULL CONSTRAINT DF_ReopenedLine_Credit DEFAULT (0),
    CONSTRAINT PK_ReopenedLine PRIMARY KEY (Book, Period, Batch, SeqNo)
);
