-- Purpose: Prepared figures: the balance of each account and department before, in and after a month.
-- Kept by: Private_PreparePeriod.
-- Columns: Beginning and Ending are debit less credit; Debit and Credit are the month's movement.
IF OBJECT_ID('dbo.PeriodBalance', 'U') IS NULL
CREATE TABLE dbo.PeriodBalance (
    Period varchar(6) NOT NULL,
    Code varchar(15) NOT NULL,
    Dept varchar(10) NOT NULL,
    Beginning money NOT NULL,
    Debit money NOT NULL,
    Credit money NOT NULL,
    Ending money NOT NULL,
    CONSTRAINT PK_PeriodBalance PRIMARY KEY (Period, Code, Dept)
);
