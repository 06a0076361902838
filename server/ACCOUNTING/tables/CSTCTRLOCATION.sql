-- Purpose: Which cost centre a location of the inventory stands for.
-- Kept by: the inventory location screen.
-- Columns: LocationID is that of INVENTORY..tbInvLocation, CstCtr the cost centre.
IF OBJECT_ID('dbo.CSTCTRLOCATION', 'U') IS NULL
CREATE TABLE dbo.CSTCTRLOCATION (
    LocationID varchar(10) NOT NULL,
    CstCtr varchar(10) NULL,
    CONSTRAINT PK_CSTCTRLOCATION PRIMARY KEY (LocationID),
    INDEX IX_CSTCTRLOCATION_CstCtr (CstCtr)
);
