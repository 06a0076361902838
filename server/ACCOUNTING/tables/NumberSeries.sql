-- Purpose: The last number drawn of each series.
-- Kept by: Private_DrawNumber, Private_RaiseNumber, sp_Release_Number.
-- Columns: Series is JV, AR, CR, AP, PF, CV, DM or CM; Year and Month are empty for the running numbers and set for the monthly
--   series of printed numbers. Series APV counts voucher numbers that begin with a prefix: Year and Month hold the prefix, LastNo
--   the whole number.
IF OBJECT_ID('dbo.NumberSeries', 'U') IS NULL
CREATE TABLE dbo.NumberSeries (
    Series varchar(4) NOT NULL,
    Year varchar(4) NOT NULL,
    Month varchar(2) NOT NULL,
    LastNo int NOT NULL,
    CONSTRAINT PK_NumberSeries PRIMARY KEY CLUSTERED (Series, Year, Month),
    CONSTRAINT CK_NumberSeries_LastNo CHECK (LastNo >= 0)
);
