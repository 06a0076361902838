-- Purpose: Classifications that accounts may carry beside their group.
-- Kept by: sp_Update_AcctClass.
-- Columns: Status is A (active) or I (inactive).
IF OBJECT_ID('dbo.AcctCodeClass', 'U') IS NULL
CREATE TABLE dbo.AcctCodeClass (
    ClassID varchar(10) NOT NULL,
    Classification varchar(100) NOT NULL,
    Status varchar(1) NOT NULL CONSTRAINT DF_AcctCodeClass_Status DEFAULT ('A'),
    PaymentID varchar(10) NULL,
    CONSTRAINT PK_AcctCodeClass PRIMARY KEY (ClassID),
    CONSTRAINT CK_AcctCodeClass_Status CHECK (Status IN ('A', 'I'))
);
