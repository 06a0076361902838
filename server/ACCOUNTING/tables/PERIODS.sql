-- Purpose: The accounting months.
-- Kept by: the periods screen.
-- Columns: PD_Start and PD_END are the first and last day; APVoucher is the last AP voucher of the month.
IF OBJECT_ID('dbo.PERIODS', 'U') IS NULL
CREATE TABLE dbo.PERIODS (
    Period varchar(6) NOT NULL,
    PD_Start datetime NULL,
    PD_END datetime NULL,
    APVoucher varchar(20) NULL,
    Description varchar(60) NULL,
    CONSTRAINT PK_PERIODS PRIMARY KEY (Period)
);
