-- Purpose: Account lines of check vouchers.
-- Kept by: the check voucher screens, which replace a voucher's lines at each save.
-- Columns: SeqNo counts from 1 in entry order.
IF OBJECT_ID('dbo.CDBDT', 'U') IS NULL
CREATE TABLE dbo.CDBDT (
    CVNo varchar(20) NOT NULL,
    SeqNo smallint NOT NULL,
    Code varchar(15) NULL,
    Dept varchar(10) NULL,
    Description varchar(200) NULL,
    Debit money NOT NULL CONSTRAINT DF_CDBDT_Debit DEFAULT (0),
    Credit money NOT NULL CONSTRAINT DF_CDBDT_Credit DEFAULT (0),
    Period varchar(6) NOT NULL,
    Posted int NOT NULL CONSTRAINT DF_CDBDT_Posted DEFAULT (0),
    Cancelled int NOT NULL CONSTRAINT DF_CDBDT_Cancelled DEFAULT (0),
    Taxable varchar(1) NULL,
    CONSTRAINT PK_CDBDT PRIMARY KEY (CVNo, SeqNo),
    INDEX IX_CDBDT_Code (Code, Period)
);
