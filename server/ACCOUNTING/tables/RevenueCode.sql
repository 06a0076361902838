-- Purpose: The accounts of the hospital's revenue codes and of single items below them.
-- Kept by: the revenue code screens.
-- Columns: ItemID is empty for the code itself; CashAcct takes cash sales, ChargeInAcct and ChargeOutAcct charges of in- and
--   out-patients.
IF OBJECT_ID('dbo.RevenueCode', 'U') IS NULL
CREATE TABLE dbo.RevenueCode (
    RevenueCodeID int IDENTITY(1, 1) NOT NULL,
    RevenueID varchar(10) NOT NULL,
    ItemID varchar(20) NULL,
    ChargeInAcct varchar(15) NULL,
    ChargeOutAcct varchar(15) NULL,
    CashAcct varchar(15) NULL,
    Dept varchar(10) NULL,
    RFAmountPercent decimal(9, 4) NULL,
    RFAmountFixed money NULL,
    Classification varchar(10) NULL,
    DiscAcct varchar(15) NULL,
    CONSTRAINT PK_RevenueCode PRIMARY KEY (RevenueCodeID),
    INDEX IX_RevenueCode_Revenue (RevenueID, ItemID)
);
