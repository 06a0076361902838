-- Purpose: The divisions under which cost centres stand.
-- Kept by: sp_Update_Departments, the department screen.
-- Columns: CODE is the key, DEPARTMENT the name.
IF OBJECT_ID('dbo.DEPARTMENTS', 'U') IS NULL
CREATE TABLE dbo.DEPARTMENTS (
    CODE varchar(10) NOT NULL,
    DEPARTMENT varchar(100) NOT NULL,
    CONSTRAINT PK_DEPARTMENTS PRIMARY KEY (CODE)
);
