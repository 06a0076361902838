-- Purpose: Account lines of AP vouchers; the line of the payable account stands last.
-- Kept by: the voucher screens, which replace a voucher's lines at each save.
-- Columns: Code and ACCT both hold the account, since screens read either.
IF OBJECT_ID('dbo.APDT', 'U') IS NULL
CREATE TABLE dbo.APDT (
    Voucher varchar(20) NOT NULL,
    SeqNo int NOT NULL,
    Code varchar(15) NOT NULL,
    ACCT varchar(15) NULL,
    Dept varchar(10) NULL,
    Description varchar(200) NULL,
    Debit money NOT NULL CONSTRAINT DF_APDT_Debit DEFAULT (0),
    Credit money NOT NULL CONSTRAINT DF_APDT_Credit DEFAULT (0),
    Period varchar(6) NOT NULL,
    CONSTRAINT PK_APDT PRIMARY KEY (Voucher, SeqNo),
    INDEX IX_APDT_Code (Code, Period)
);
