-- Purpose: The rights of each user, one row a user and right.
-- Kept by: user settings.
-- Columns: CanAccess is 1 where the right is granted.
IF OBJECT_ID('dbo.ACCESS', 'U') IS NULL
CREATE TABLE dbo.ACCESS (
    UserID varchar(15) NOT NULL,
    AccessID varchar(20) NOT NULL,
    CanAccess int NOT NULL,
    CONSTRAINT PK_ACCESS PRIMARY KEY (UserID, AccessID),
    CONSTRAINT CK_ACCESS_CanAccess CHECK (CanAccess IN (0, 1))
);
