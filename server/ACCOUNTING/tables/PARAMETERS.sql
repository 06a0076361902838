-- Purpose: Program parameters by code, for every hospital (Client empty) or for one.
-- Kept by: sp_Update_Parameters.
-- Columns: Code is the key as it was sent, in any letter case; ParamValue is "Y" for a flag that is on.
IF OBJECT_ID('dbo.PARAMETERS', 'U') IS NULL
CREATE TABLE dbo.PARAMETERS (
    Code varchar(60) NOT NULL,
    Client varchar(10) NOT NULL CONSTRAINT DF_PARAMETERS_Client DEFAULT (''),
    ParamValue varchar(200) NULL,
    Description varchar(200) NULL,
    CONSTRAINT PK_PARAMETERS PRIMARY KEY (Code, Client)
);
