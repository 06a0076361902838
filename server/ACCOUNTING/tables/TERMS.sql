-- Purpose: Payment terms.
-- Kept by: sp_Update_Terms.
-- Columns: NoDays from the voucher's date to the due date; Status is A (active) or I (inactive).
IF OBJECT_ID('dbo.TERMS', 'U') IS NULL
CREATE TABLE dbo.TERMS (
    TermsID smallint NOT NULL,
    Terms varchar(60) NOT NULL,
    NoDays int NOT NULL CONSTRAINT DF_TERMS_NoDays DEFAULT (0),
    Status varchar(1) NOT NULL CONSTRAINT DF_TERMS_Status DEFAULT ('A'),
    CONSTRAINT PK_TERMS PRIMARY KEY (TermsID),
    CONSTRAINT CK_TERMS_Status CHECK (Status IN ('A', 'I')),
    CONSTRAINT CK_TERMS_NoDays CHECK (NoDays >= 0)
);
