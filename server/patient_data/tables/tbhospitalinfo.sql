-- Purpose: The one row of the hospital in the patient system; screens ask it for the server's clock.
-- Kept by: the patient system.
-- Columns: HospitalName is the hospital's name.
IF OBJECT_ID('dbo.tbhospitalinfo', 'U') IS NULL
CREATE TABLE dbo.tbhospitalinfo (
    HospitalID int NOT NULL,
    HospitalName varchar(100) NULL,
    CONSTRAINT PK_tbhospitalinfo PRIMARY KEY (HospitalID)
);
