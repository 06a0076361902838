-- Purpose: Lets the end of the audit log move forward only: one row at a time, with the hash of the row that stands there.
-- Guards: AuditHead
-- Errors: 50040
CREATE OR ALTER TRIGGER dbo.tr_AuditHead_Forward
ON dbo.AuditHead
AFTER UPDATE, DELETE
AS
BEGIN
    SET NOCOUNT ON;
    IF EXISTS (
        SELECT 1
        FROM deleted AS D
        LEFT JOIN inserted AS I ON I.OneRow = D.OneRow
        LEFT JOIN dbo.AuditLog AS L ON L.LogID = I.LastID
        WHERE I.OneRow IS NULL OR I.LastID NOT IN (D.LastID, D.LastID + 1)
            OR (I.LastHash <> D.LastHash AND I.LastHash <> ISNULL(L.Hash, ''))
    ) THROW 50040, 'The end of the audit log is never set back.', 1;
END;
