-- Purpose: The number that a connection has drawn of a series and that fn_New... gives back to it.
-- Kept by: Private_DrawNumber, Private_RaiseNumber, sp_Release_Number.
-- Columns: SessionID is the connection; one row a connection and series.
IF OBJECT_ID('dbo.NumberReserved', 'U') IS NULL
CREATE TABLE dbo.NumberReserved (
    SessionID int NOT NULL,
    Series varchar(4) NOT NULL,
    Year varchar(4) NOT NULL,
    Month varchar(2) NOT NULL,
    Number int NOT NULL,
    ReservedAt datetime NOT NULL,
    CONSTRAINT PK_NumberReserved PRIMARY KEY CLUSTERED (SessionID, Series, Year, Month)
);
