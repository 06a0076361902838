-- Purpose: The chart of accounts.
-- Kept by: sp_Update_AcctCode, sp_Update_AcctVend.
-- Columns: Type is that of the account's group; Subsidiary 1 asks for a cost centre on each line; Mast_Dept is "MAS" for an
--   account that only heads others and takes no lines; Classification is a ClassID; BudgetClassID belongs to the budget.
IF OBJECT_ID('dbo.AcctCode', 'U') IS NULL
CREATE TABLE dbo.AcctCode (
    Code varchar(15) NOT NULL,
    Description varchar(100) NOT NULL,
    Type varchar(2) NOT NULL,
    Class varchar(2) NOT NULL CONSTRAINT DF_AcctCode_Class DEFAULT (''),
    GLGroup varchar(10) NULL,
    Subsidiary smallint NOT NULL CONSTRAINT DF_AcctCode_Subsidiary DEFAULT (0),
    IsBankAcct bit NOT NULL CONSTRAINT DF_AcctCode_IsBankAcct DEFAULT (0),
    Mast_Dept varchar(3) NOT NULL CONSTRAINT DF_AcctCode_MastDept DEFAULT (''),
    BudgetClassID varchar(10) NULL,
    DefaultDept varchar(10) NULL,
    Classification varchar(10) NULL,
    VendorID varchar(15) NULL,
    CONSTRAINT PK_AcctCode PRIMARY KEY (Code),
    CONSTRAINT FK_AcctCode_GLGROUP FOREIGN KEY (GLGroup) REFERENCES dbo.GLGROUP (GLGroup),
    CONSTRAINT CK_AcctCode_Type CHECK (Type IN ('AS', 'LI', 'EQ', 'IN', 'EX')),
    INDEX IX_AcctCode_Description (Description),
    INDEX IX_AcctCode_Group (GLGroup, Code)
);
