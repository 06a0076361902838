-- Purpose: The one row of the hospital's tax registration.
-- Kept by: program settings.
-- Columns: as the tax forms name them; RDOCode is the revenue district office.
IF OBJECT_ID('dbo.tbBIRRegistration', 'U') IS NULL
CREATE TABLE dbo.tbBIRRegistration (
    OneRow bit NOT NULL CONSTRAINT DF_tbBIRRegistration_OneRow DEFAULT (1),
    TIN varchar(20) NULL,
    RegisteredName varchar(100) NULL,
    LastName varchar(50) NULL,
    FirstName varchar(50) NULL,
    MiddleName varchar(50) NULL,
    TradeName varchar(100) NULL,
    Address1 varchar(150) NULL,
    Address2 varchar(150) NULL,
    ZipCode varchar(10) NULL,
    RDOCode varchar(10) NULL,
    Representative varchar(100) NULL,
    RepresentativeTitle varchar(60) NULL,
    RepresentativeTIN varchar(20) NULL,
    CONSTRAINT PK_tbBIRRegistration PRIMARY KEY (OneRow),
    CONSTRAINT CK_tbBIRRegistration_OneRow CHECK (OneRow = 1)
);
