-- Purpose: Check voucher series by year.
-- Kept by: the check voucher screen.
-- Columns: CVYear is the last two digits of the year, CVNUM the last number.
IF OBJECT_ID('dbo.CVNUM', 'U') IS NULL
CREATE TABLE dbo.CVNUM (
    CVYear varchar(4) NOT NULL,
    CVNUM int NOT NULL,
    CONSTRAINT PK_CVNUM PRIMARY KEY (CVYear)
);
