-- Purpose: Which batch took over a hospital upload of a day.
-- Kept by: the uploads; deleting a batch clears its link.
-- Columns: Status is F once a batch took the upload over.
IF OBJECT_ID('dbo.tbAcctgLink', 'U') IS NULL
CREATE TABLE dbo.tbAcctgLink (
    BatchDate datetime NOT NULL,
    BatchType varchar(4) NOT NULL,
    BatchNo varchar(15) NULL,
    Status varchar(1) NULL,
    CONSTRAINT PK_tbAcctgLink PRIMARY KEY (BatchDate, BatchType),
    INDEX IX_tbAcctgLink_BatchNo (BatchNo)
);
