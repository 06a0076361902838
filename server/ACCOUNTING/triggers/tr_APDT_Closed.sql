-- Purpose: Refuses every change of the lines of a closed month of book AP.
-- Guards: APDT
-- Errors: 50010 naming the book and the period
CREATE OR ALTER TRIGGER dbo.tr_APDT_Closed
ON dbo.APDT
AFTER INSERT, UPDATE, DELETE
AS
BEGIN
    IF @@ROWCOUNT = 0 RETURN;
    SET NOCOUNT ON;

    DECLARE @Period varchar(6);
    SELECT @Period = MIN(C.Period)
    FROM (SELECT I.Period FROM inserted AS I UNION ALL SELECT D.Period FROM deleted AS D) AS C
    WHERE EXISTS (SELECT 1 FROM dbo.GL AS G WHERE G.BatchType = 'AP' AND G.Period = C.Period);
    IF @Period IS NOT NULL EXEC dbo.Private_RefuseClosed 'AP', @Period;
END;
