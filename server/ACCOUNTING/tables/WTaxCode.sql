-- Purpose: Withholding tax codes with their rate and account.
-- Kept by: the tax account screen.
-- Columns: TaxPercent is a percent, 2 for 2 percent; GLCode the account of tax withheld under the code.
IF OBJECT_ID('dbo.WTaxCode', 'U') IS NULL
CREATE TABLE dbo.WTaxCode (
    TaxCode varchar(10) NOT NULL,
    TaxDesc varchar(200) NULL,
    TaxPercent float NULL,
    GLCode varchar(15) NULL,
    CONSTRAINT PK_WTaxCode PRIMARY KEY (TaxCode),
    INDEX IX_WTaxCode_GLCode (GLCode)
);
