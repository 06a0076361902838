-- Purpose: Cost centres: the departments that journal lines name.
-- Kept by: sp_Update_CstCtr.
-- Columns: DeptCode is the division in DEPARTMENTS, which may be missing; Division is free.
IF OBJECT_ID('dbo.CstCtr', 'U') IS NULL
CREATE TABLE dbo.CstCtr (
    CstCtr varchar(10) NOT NULL,
    Description varchar(100) NOT NULL,
    Division varchar(10) NULL,
    DeptCode varchar(10) NULL,
    CONSTRAINT PK_CstCtr PRIMARY KEY (CstCtr),
    INDEX IX_CstCtr_Description (Description)
);
