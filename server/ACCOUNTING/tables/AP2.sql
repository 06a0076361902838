-- Purpose: The printed number of an AP voucher and the parts it was made of.
-- Kept by: the voucher screens.
-- Columns: APSeries counts within APYear and APMonth.
IF OBJECT_ID('dbo.AP2', 'U') IS NULL
CREATE TABLE dbo.AP2 (
    Voucher varchar(20) NOT NULL,
    PrintVoucher varchar(30) NULL,
    Division varchar(10) NULL,
    APYear varchar(4) NULL,
    APMonth varchar(2) NULL,
    APSeries varchar(10) NULL,
    CONSTRAINT PK_AP2 PRIMARY KEY CLUSTERED (Voucher),
    INDEX IX_AP2_PrintVoucher (PrintVoucher)
);
