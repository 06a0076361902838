-- Purpose: Bank accounts from which checks are drawn.
-- Kept by: the bank accounts screen.
-- Columns: Acct is the ledger account; CheckNo the last check number; ChkReportName a check layout of its own.
IF OBJECT_ID('dbo.BANK', 'U') IS NULL
CREATE TABLE dbo.BANK (
    BankID smallint NOT NULL,
    Description varchar(100) NOT NULL,
    Acct varchar(15) NULL,
    CheckNo varchar(20) NULL,
    Status varchar(1) NOT NULL CONSTRAINT DF_BANK_Status DEFAULT ('A'),
    ChkReportName varchar(100) NULL,
    CONSTRAINT PK_BANK PRIMARY KEY (BankID),
    CONSTRAINT CK_BANK_Status CHECK (Status IN ('A', 'I')),
    INDEX IX_BANK_Acct (Acct)
);
