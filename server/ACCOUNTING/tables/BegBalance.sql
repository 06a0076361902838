-- Purpose: Opening balance of each account in a year.
-- Kept by: sp_Insert_BegBalance, the beginning balance screens, sp_YearEndClose.
-- Columns: Acct and Code hold the same account.
IF OBJECT_ID('dbo.BegBalance', 'U') IS NULL
CREATE TABLE dbo.BegBalance (
    Year varchar(4) NOT NULL,
    Acct varchar(15) NOT NULL,
    Code varchar(15) NOT NULL,
    Debit money NOT NULL CONSTRAINT DF_BegBalance_Debit DEFAULT (0),
    Credit money NOT NULL CONSTRAINT DF_BegBalance_Credit DEFAULT (0),
    CONSTRAINT PK_BegBalance PRIMARY KEY (Year, Acct)
);
