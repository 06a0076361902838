-- Purpose: Refuses a report on a month whose figures were never prepared.
-- Called by: the report procedures.
-- Parameters:
--   @Period  yyyyMM
-- Errors: 50006 no period, 50030 naming the period
CREATE OR ALTER PROCEDURE dbo.Private_RefuseUnprepared
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @Text varchar(200);
    EXEC dbo.Private_CheckPeriod @Period;
    IF NOT EXISTS (SELECT 1 FROM dbo.PreparedPeriod AS P WHERE P.Period = @Period)
    BEGIN
        SET @Text = 'The figures of period ' + @Period + ' are not prepared yet. Run the financial preparation first.';
        THROW 50030, @Text, 1;
    END;
END;
