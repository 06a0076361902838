-- Purpose: Refuses what would change the figures of a closed month of book CD: new and removed check vouchers, and their amount,
--   period, date or cancelling. Other columns may change.
-- Guards: CDB
-- Errors: 50010 naming the book and the period
CREATE OR ALTER TRIGGER dbo.tr_CDB_Closed
ON dbo.CDB
AFTER INSERT, UPDATE, DELETE
AS
BEGIN
    IF @@ROWCOUNT = 0 RETURN;
    SET NOCOUNT ON;

    DECLARE @Period varchar(6);
    SELECT @Period = MIN(G.Period)
    FROM dbo.GL AS G
    WHERE G.BatchType = 'CD' AND G.Period IN (
        SELECT I.Period
        FROM inserted AS I
        LEFT JOIN deleted AS D ON D.CVNo = I.CVNo
        WHERE D.CVNo IS NULL OR D.Period <> I.Period OR D.CVAmt <> I.CVAmt OR D.Cancelled <> I.Cancelled OR D.CVDate <> I.CVDate
        UNION
        SELECT D.Period
        FROM deleted AS D
        LEFT JOIN inserted AS I ON I.CVNo = D.CVNo
        WHERE I.CVNo IS NULL OR I.Period <> D.Period
    );
    IF @Period IS NOT NULL EXEC dbo.Private_RefuseClosed 'CD', @Period;
END;
