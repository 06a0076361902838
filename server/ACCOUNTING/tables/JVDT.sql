-- Purpose: Lines of the journal voucher book.
-- Kept by: the entry screen, which replaces a batch's lines at each save; uploads.
-- Columns: SeqNo counts from 1 within the batch; SubCode is the vendor of a payable line; Voucher and Acct serve adjustments of
--   payable vouchers. Lines are written before their header, so no foreign key binds them; checks look for orphans.
IF OBJECT_ID('dbo.JVDT', 'U') IS NULL
CREATE TABLE dbo.JVDT (
    Batch varchar(15) NOT NULL,
    SeqNo int NOT NULL,
    Period varchar(6) NOT NULL,
    Code varchar(15) NOT NULL,
    Dept varchar(10) NOT NULL CONSTRAINT DF_JVDT_Dept DEFAULT (''),
    BatchDate datetime NULL,
    Description varchar(200) NULL,
    Debit money NOT NULL CONSTRAINT DF_JVDT_Debit DEFAULT (0),
    Credit money NOT NULL CONSTRAINT DF_JVDT_Credit DEFAULT (0),
    SubCode varchar(15) NULL,
    Posted int NOT NULL CONSTRAINT DF_JVDT_Posted DEFAULT (0),
    Acct varchar(15) NULL,
    Voucher varchar(20) NULL,
    CONSTRAINT PK_JVDT PRIMARY KEY (Batch, SeqNo),
    INDEX IX_JVDT_Code (Code, Period)
);
