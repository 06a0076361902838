-- Purpose: Classes of vendors, such as suppliers and doctors.
-- Kept by: the vendor screens.
-- Columns: ClassCode is the key, Description the name.
IF OBJECT_ID('dbo.VendClass', 'U') IS NULL
CREATE TABLE dbo.VendClass (
    ClassCode varchar(5) NOT NULL,
    Description varchar(60) NOT NULL,
    CONSTRAINT PK_VendClass PRIMARY KEY (ClassCode)
);
