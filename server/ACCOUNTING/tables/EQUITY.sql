-- Purpose: Accounts of the equity section with their share figures.
-- Kept by: sp_Update_Equity.
-- Columns: Kind is AUTHORIZED, ISSUED, SUBSCRIBED, RECEIVABLE, TREASURY or RETAINED; Shares and ParValue describe the stock.
IF OBJECT_ID('dbo.EQUITY', 'U') IS NULL
CREATE TABLE dbo.EQUITY (
    Code varchar(15) NOT NULL,
    Description varchar(100) NOT NULL,
    Kind varchar(10) NOT NULL,
    Shares decimal(15, 2) NULL,
    ParValue money NULL,
    CONSTRAINT PK_EQUITY PRIMARY KEY (Code, Kind),
    CONSTRAINT CK_EQUITY_Kind CHECK (Kind IN ('AUTHORIZED', 'ISSUED', 'SUBSCRIBED', 'RECEIVABLE', 'TREASURY', 'RETAINED'))
);
