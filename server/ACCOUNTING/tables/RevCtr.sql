-- Purpose: Revenue centres.
-- Kept by: sp_Update_RevCtr.
-- Columns: RevCtr is the key, Description the name.
IF OBJECT_ID('dbo.RevCtr', 'U') IS NULL
CREATE TABLE dbo.RevCtr (
    RevCtr varchar(10) NOT NULL,
    Description varchar(100) NOT NULL,
    CONSTRAINT PK_RevCtr PRIMARY KEY (RevCtr)
);
