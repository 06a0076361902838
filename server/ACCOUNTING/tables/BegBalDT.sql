-- Purpose: Figures of months before this system began, by book, account and department.
-- Kept by: the beginning balance screens.
-- Columns: BatchType is AP, CD, CR, AR or JV.
IF OBJECT_ID('dbo.BegBalDT', 'U') IS NULL
CREATE TABLE dbo.BegBalDT (
    EntryID int IDENTITY(1, 1) NOT NULL,
    Year varchar(4) NOT NULL,
    Acct varchar(15) NOT NULL,
    Period varchar(6) NOT NULL,
    BatchType varchar(4) NOT NULL,
    Dept varchar(10) NULL,
    Debit money NOT NULL CONSTRAINT DF_BegBalDT_Debit DEFAULT (0),
    Credit money NOT NULL CONSTRAINT DF_BegBalDT_Credit DEFAULT (0),
    CONSTRAINT PK_BegBalDT PRIMARY KEY (EntryID),
    CONSTRAINT CK_BegBalDT_BatchType CHECK (BatchType IN ('AP', 'CD', 'CR', 'AR', 'JV')),
    INDEX IX_BegBalDT_Period (Period, BatchType),
    INDEX IX_BegBalDT_Year (Year, Acct)
);
