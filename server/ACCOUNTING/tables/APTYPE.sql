-- Purpose: Payable types with the accounts that vouchers of the type use.
-- Kept by: sp_Update_PayableType.
-- Columns: AcctCode is the purchase account, APAcct the payable, ITxAcctCode the input tax, DisAcctCode the discount.
IF OBJECT_ID('dbo.APTYPE', 'U') IS NULL
CREATE TABLE dbo.APTYPE (
    Code smallint NOT NULL,
    Description varchar(60) NOT NULL,
    Status varchar(1) NOT NULL CONSTRAINT DF_APTYPE_Status DEFAULT ('A'),
    VATClass varchar(5) NULL,
    AcctCode varchar(15) NULL,
    APAcct varchar(15) NULL,
    ITxAcctCode varchar(15) NULL,
    DisAcctCode varchar(15) NULL,
    CONSTRAINT PK_APTYPE PRIMARY KEY (Code),
    CONSTRAINT CK_APTYPE_Status CHECK (Status IN ('A', 'I'))
);
