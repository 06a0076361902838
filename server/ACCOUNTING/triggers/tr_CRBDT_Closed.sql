-- Purpose: Refuses every change of the lines of a closed month of book CR.
-- Guards: CRBDT
-- Errors: 50010 naming the book and the period
CREATE OR ALTER TRIGGER dbo.tr_CRBDT_Closed
ON dbo.CRBDT
AFTER INSERT, UPDATE, DELETE
AS
BEGIN
    IF @@ROWCOUNT = 0 RETURN;
    SET NOCOUNT ON;

    DECLARE @Period varchar(6);
    SELECT @Period = MIN(C.Period)
    FROM (SELECT I.Period FROM inserted AS I UNION ALL SELECT D.Period FROM deleted AS D) AS C
    WHERE EXISTS (SELECT 1 FROM dbo.GL AS G WHERE G.BatchType = 'CR' AND G.Period = C.Period);
    IF @Period IS NOT NULL EXEC dbo.Private_RefuseClosed 'CR', @Period;
END;
