-- Purpose: Suppliers of the inventory system, as search dialogs list them.
-- Kept by: the inventory system.
-- Columns: Status is A (active) or I (inactive).
IF OBJECT_ID('dbo.tbInvSupplier', 'U') IS NULL
CREATE TABLE dbo.tbInvSupplier (
    SupplierID varchar(15) NOT NULL,
    SupplierName varchar(100) NULL,
    TIN varchar(20) NULL,
    Address1 varchar(100) NULL,
    Address2 varchar(100) NULL,
    ContactPerson varchar(80) NULL,
    isVAT bit NULL,
    Status varchar(1) NULL,
    CONSTRAINT PK_tbInvSupplier PRIMARY KEY (SupplierID),
    INDEX IX_tbInvSupplier_Name (SupplierName)
);
