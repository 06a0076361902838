-- Purpose: The settings row and the tax registration row, empty, so that the screens have a row to edit.
-- Check: a row that stands already is left alone.
INSERT INTO dbo.SYS (OneRow, Company, YearType)
SELECT 1, '', 'CALENDAR'
WHERE NOT EXISTS (SELECT 1 FROM dbo.SYS AS S);

INSERT INTO dbo.tbBIRRegistration (OneRow)
SELECT 1
WHERE NOT EXISTS (SELECT 1 FROM dbo.tbBIRRegistration AS T);

INSERT INTO dbo.AuditHead (OneRow, LastID, LastHash)
SELECT 1, 0, ''
WHERE NOT EXISTS (SELECT 1 FROM dbo.AuditHead AS H);
