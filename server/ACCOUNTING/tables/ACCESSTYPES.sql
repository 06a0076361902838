-- Purpose: The rights that exist.
-- Kept by: change 0001.
-- Columns: Sequence orders the list of rights; NULL hides a right from it.
IF OBJECT_ID('dbo.ACCESSTYPES', 'U') IS NULL
CREATE TABLE dbo.ACCESSTYPES (
    AccessID varchar(20) NOT NULL,
    Sequence int NULL,
    Description varchar(100) NOT NULL,
    CONSTRAINT PK_ACCESSTYPES PRIMARY KEY (AccessID)
);
