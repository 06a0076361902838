-- Purpose: The printed number of a journal voucher and the parts it was made of.
-- Kept by: sp_Insert_JV2.
-- Columns: JVSeries counts within JVYear and JVMonth; PrintJVBatch is empty where printed numbers are not in use.
IF OBJECT_ID('dbo.JV2', 'U') IS NULL
CREATE TABLE dbo.JV2 (
    Batch varchar(15) NOT NULL,
    PrintJVBatch varchar(30) NULL,
    Division varchar(10) NULL,
    JVYear varchar(4) NULL,
    JVMonth varchar(2) NULL,
    JVSeries varchar(10) NULL,
    CONSTRAINT PK_JV2 PRIMARY KEY CLUSTERED (Batch),
    INDEX IX_JV2_PrintJVBatch (PrintJVBatch)
);
