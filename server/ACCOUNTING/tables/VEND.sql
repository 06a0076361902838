-- Purpose: Vendors: the payees of vouchers and checks.
-- Kept by: the vendor screens.
-- Columns: VatRate, WTXRate and INRate are percents; ATC is the tax code of withholding; APType and APTerm are defaults of a
--   voucher; Active 0 takes the vendor out of the pick lists.
IF OBJECT_ID('dbo.VEND', 'U') IS NULL
CREATE TABLE dbo.VEND (
    VendorID varchar(15) NOT NULL,
    Company varchar(100) NULL,
    Addr1 varchar(100) NULL,
    Addr2 varchar(100) NULL,
    Phone varchar(40) NULL,
    VAT varchar(20) NULL,
    City varchar(60) NULL,
    PROV varchar(60) NULL,
    ZIP varchar(10) NULL,
    TIN varchar(20) NULL,
    Contact varchar(80) NULL,
    ACCT varchar(15) NULL,
    Fax varchar(40) NULL,
    Class varchar(5) NULL,
    WTax varchar(15) NULL,
    LastName varchar(50) NULL,
    FirstName varchar(50) NULL,
    MiddleName varchar(50) NULL,
    APType smallint NULL,
    APTerm smallint NULL,
    WTXRate decimal(9, 6) NULL,
    VatRate decimal(9, 6) NULL,
    INRate decimal(9, 6) NULL,
    ATC varchar(10) NULL,
    Active bit NOT NULL CONSTRAINT DF_VEND_Active DEFAULT (1),
    CONSTRAINT PK_VEND PRIMARY KEY (VendorID),
    INDEX IX_VEND_Company (Company)
);
