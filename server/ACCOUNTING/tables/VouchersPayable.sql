-- Purpose: Entries of the voucher ledger that do not come from an AP voucher itself.
-- Kept by: sp_Insert_Vouchers, sp_Init_APCDB.
-- Columns: Source is the book of the document Reference, or BB for a beginning balance; a credit raises what is owed.
IF OBJECT_ID('dbo.VouchersPayable', 'U') IS NULL
CREATE TABLE dbo.VouchersPayable (
    EntryID int IDENTITY(1, 1) NOT NULL,
    Voucher varchar(20) NOT NULL,
    Source varchar(4) NOT NULL,
    Reference varchar(20) NOT NULL,
    ReportDate datetime NULL,
    Particulars varchar(200) NULL,
    Debit money NOT NULL CONSTRAINT DF_VouchersPayable_Debit DEFAULT (0),
    Credit money NOT NULL CONSTRAINT DF_VouchersPayable_Credit DEFAULT (0),
    CONSTRAINT PK_VouchersPayable PRIMARY KEY (EntryID),
    CONSTRAINT UQ_VouchersPayable_Document UNIQUE (Voucher, Source, Reference),
    CONSTRAINT CK_VouchersPayable_Amounts CHECK (Debit >= 0 AND Credit >= 0),
    INDEX IX_VouchersPayable_Reference (Reference, Source)
);
