-- Purpose: Which payable voucher a check voucher, journal line or credit memo touches, and by how much.
-- Kept by: sp_Insert_APCDB, sp_Init_APCDB.
-- Columns: CVNo is the document of book BookCode (a check voucher number or a batch); Amt_Paid is debit less credit on the payable
--   account Acct.
IF OBJECT_ID('dbo.APCDB', 'U') IS NULL
CREATE TABLE dbo.APCDB (
    LinkID int IDENTITY(1, 1) NOT NULL,
    CVNo varchar(20) NOT NULL,
    BookCode varchar(4) NOT NULL CONSTRAINT DF_APCDB_BookCode DEFAULT ('CD'),
    ApVoucher varchar(20) NOT NULL,
    Amt_Paid money NOT NULL,
    Acct varchar(15) NULL,
    SeqNo int NULL,
    CvSeries varchar(10) NULL,
    CONSTRAINT PK_APCDB PRIMARY KEY (LinkID),
    INDEX IX_APCDB_CVNo (CVNo, BookCode),
    INDEX IX_APCDB_ApVoucher (ApVoucher)
);
