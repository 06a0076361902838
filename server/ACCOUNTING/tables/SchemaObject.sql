-- Purpose: The server scripts that this database carries, with the fingerprint of each.
-- Kept by: the installer.
-- Columns: Script is the path below the folder of the scripts; numbered changes stand here too and run once.
IF OBJECT_ID('dbo.SchemaObject', 'U') IS NULL
CREATE TABLE dbo.SchemaObject (
    Script varchar(200) NOT NULL,
    Fingerprint varchar(32) NOT NULL,
    InstalledAt datetime NOT NULL CONSTRAINT DF_SchemaObject_InstalledAt DEFAULT (GETDATE()),
    CONSTRAINT PK_SchemaObject PRIMARY KEY (Script)
);
