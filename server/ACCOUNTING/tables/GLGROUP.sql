-- Purpose: Schedule groups of the chart of accounts.
-- Kept by: sp_Update_GLGroup.
-- Columns: Type is AS, LI, EQ, IN or EX; Class divides a type (C, O and for income and expense R, S, D, P); MainGroup is the
--   group above, empty at the top.
IF OBJECT_ID('dbo.GLGROUP', 'U') IS NULL
CREATE TABLE dbo.GLGROUP (
    GLGroup varchar(10) NOT NULL,
    Description varchar(100) NOT NULL,
    Type varchar(2) NOT NULL,
    Class varchar(2) NOT NULL CONSTRAINT DF_GLGROUP_Class DEFAULT (''),
    MainGroup varchar(10) NULL,
    CONSTRAINT PK_GLGROUP PRIMARY KEY (GLGroup),
    CONSTRAINT CK_GLGROUP_Type CHECK (Type IN ('AS', 'LI', 'EQ', 'IN', 'EX')),
    INDEX IX_GLGROUP_MainGroup (MainGroup)
);
