-- Purpose: Which months are prepared, when, by whom, and since when their figures are older than the ledger.
-- Kept by: Private_PreparePeriod, Private_MarkStale.
-- Columns: StaleSince is NULL while the prepared figures are those of the ledger.
IF OBJECT_ID('dbo.PreparedPeriod', 'U') IS NULL
CREATE TABLE dbo.PreparedPeriod (
    Period varchar(6) NOT NULL,
    PreparedAt datetime NOT NULL,
    PreparedBy varchar(15) NOT NULL,
    StaleSince datetime NULL,
    CONSTRAINT PK_PreparedPeriod PRIMARY KEY (Period)
);
