-- Purpose: First and last day of each fiscal year, where the hospital's year is not the calendar's.
-- Kept by: the fiscal years screen.
-- Columns: FiscalYear is the year's name, four digits.
IF OBJECT_ID('dbo.FiscalYears', 'U') IS NULL
CREATE TABLE dbo.FiscalYears (
    FiscalYear varchar(4) NOT NULL,
    StartDate datetime NULL,
    EndDate datetime NULL,
    CONSTRAINT PK_FiscalYears PRIMARY KEY (FiscalYear)
);
