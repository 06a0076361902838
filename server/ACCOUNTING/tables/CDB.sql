-- Purpose: Headers of check vouchers.
-- Kept by: the check voucher screens.
-- Columns: CVNo is the internal key; CVAmt is net of tax withheld; VariousDr 1 for various debits.
IF OBJECT_ID('dbo.CDB', 'U') IS NULL
CREATE TABLE dbo.CDB (
    CVNo varchar(20) NOT NULL,
    CVDate datetime NOT NULL,
    CVAmt money NOT NULL CONSTRAINT DF_CDB_CVAmt DEFAULT (0),
    Particular varchar(1000) NULL,
    VendorID varchar(15) NULL,
    Payee varchar(100) NULL,
    ApVoucher varchar(200) NULL,
    Period varchar(6) NOT NULL,
    Encoder varchar(15) NULL,
    TransDate datetime NOT NULL CONSTRAINT DF_CDB_TransDate DEFAULT (GETDATE()),
    EditEncoder varchar(15) NULL,
    EditTransDate datetime NULL,
    BankId smallint NULL,
    APType smallint NULL,
    VariousDr bit NULL,
    Posted bit NOT NULL CONSTRAINT DF_CDB_Posted DEFAULT (0),
    PostedBy varchar(15) NULL,
    PostedDate datetime NULL,
    Cancelled bit NOT NULL CONSTRAINT DF_CDB_Cancelled DEFAULT (0),
    CONSTRAINT PK_CDB PRIMARY KEY CLUSTERED (CVNo),
    INDEX IX_CDB_Period (Period, Posted),
    INDEX IX_CDB_Date (CVDate, CVNo),
    INDEX IX_CDB_Vendor (VendorID, CVDate)
);
