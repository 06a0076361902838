-- Purpose: The totals of the balance sheet one year before a period.
-- Called by: the balance sheet report.
-- Parameters:
--   @Period  yyyyMM of this year; empty takes the period last prepared for reports
-- Returns: Type, Amount as sp_BSTotals gives them; no row where the month of last year is not prepared
-- Errors: 50006 no period
CREATE OR ALTER PROCEDURE dbo.sp_BSLYTotals
    @Period varchar(6) = ''
AS
BEGIN
    SET NOCOUNT ON;

    IF ISNULL(@Period, '') = '' SELECT @Period = S.rptpdEnd FROM dbo.SYS AS S;
    EXEC dbo.Private_CheckPeriod @Period;
    SET @Period = dbo.fn_PeriodAfter(@Period, -12);
    IF NOT EXISTS (SELECT 1 FROM dbo.PreparedPeriod AS P WHERE P.Period = @Period)
    BEGIN
        SELECT CAST('' AS varchar(3)) AS Type, CAST(0 AS money) AS Amount WHERE 1 = 0;
        RETURN;
    END;
    EXEC dbo.sp_BSTotals @Period;
END;
