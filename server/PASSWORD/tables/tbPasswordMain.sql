-- Purpose: Employees with their password hash.
-- Kept by: the hospital's user administration; the sign-in raises FailedTries and LockedUntil.
-- Columns: PasswordHash is an Argon2id text; UserRights are letters (S supervisor, A auditor); DeptCode lists the systems that the
--   employee may open, separated by ";" (55 is accounting); after wrong tries no sign-in before LockedUntil.
IF OBJECT_ID('dbo.tbPasswordMain', 'U') IS NULL
CREATE TABLE dbo.tbPasswordMain (
    EmployeeID varchar(15) NOT NULL,
    LastName varchar(50) NULL,
    FirstName varchar(50) NULL,
    MiddleName varchar(50) NULL,
    PasswordHash varchar(200) NULL,
    UserRights varchar(20) NULL,
    DeptCode varchar(100) NULL,
    FailedTries int NOT NULL CONSTRAINT DF_tbPasswordMain_FailedTries DEFAULT (0),
    LockedUntil datetime NULL,
    CONSTRAINT PK_tbPasswordMain PRIMARY KEY (EmployeeID)
);
