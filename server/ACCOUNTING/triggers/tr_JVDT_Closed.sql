-- Purpose: Refuses every change of the lines of a closed month of book JV, and of a cancelled batch.
-- Guards: JVDT
-- Errors: 50010 naming the book and the period, 50003 naming the cancelled batch
CREATE OR ALTER TRIGGER dbo.tr_JVDT_Closed
ON dbo.JVDT
AFTER INSERT, UPDATE, DELETE
AS
BEGIN
    IF @@ROWCOUNT = 0 RETURN;
    SET NOCOUNT ON;

    DECLARE @Period varchar(6);
    DECLARE @Text varchar(200);
    DECLARE @Batch varchar(15);
    SELECT @Period = MIN(C.Period)
    FROM (SELECT I.Period FROM inserted AS I UNION ALL SELECT D.Period FROM deleted AS D) AS C
    WHERE EXISTS (SELECT 1 FROM dbo.GL AS G WHERE G.BatchType = 'JV' AND G.Period = C.Period);
    IF @Period IS NOT NULL EXEC dbo.Private_RefuseClosed 'JV', @Period;
    SELECT @Batch = MIN(C.Batch)
    FROM (SELECT I.Batch FROM inserted AS I UNION ALL SELECT D.Batch FROM deleted AS D) AS C
    WHERE EXISTS (SELECT 1 FROM dbo.JV AS J WHERE J.Cancelled = 1 AND J.Batch = C.Batch);
    IF @Batch IS NOT NULL
    BEGIN
        SET @Text = 'Batch ' + @Batch + ' of book JV is cancelled.';
        THROW 50003, @Text, 1;
    END;
END;
