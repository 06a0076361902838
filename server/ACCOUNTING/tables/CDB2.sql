-- Purpose: The printed number of a check voucher and the parts it was made of.
-- Kept by: the check voucher screens.
-- Columns: CVSeries counts within CVYear and CVMonth.
IF OBJECT_ID('dbo.CDB2', 'U') IS NULL
CREATE TABLE dbo.CDB2 (
    CVNo varchar(20) NOT NULL,
    PrintCVNo varchar(30) NULL,
    Division varchar(10) NULL,
    CVYear varchar(4) NULL,
    CVMonth varchar(2) NULL,
    CVSeries varchar(10) NULL,
    CONSTRAINT PK_CDB2 PRIMARY KEY CLUSTERED (CVNo),
    INDEX IX_CDB2_PrintCVNo (PrintCVNo)
);
