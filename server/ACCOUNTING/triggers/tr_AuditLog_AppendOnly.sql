-- Purpose: Refuses every change and removal of audit rows.
-- Guards: AuditLog
-- Errors: 50040
CREATE OR ALTER TRIGGER dbo.tr_AuditLog_AppendOnly
ON dbo.AuditLog
AFTER UPDATE, DELETE
AS
BEGIN
    SET NOCOUNT ON;
    IF EXISTS (SELECT 1 FROM deleted AS D) THROW 50040, 'Rows of the audit log are never changed or removed.', 1;
END;
