-- Purpose: The trial balance as of the same month of several years.
-- Called by: the trial balance by years.
-- Parameters:
--   @Period  yyyyMM, the month of the last year
--   @Years   how many years, this one included
-- Returns: Code, Title, Period, Ending (debit less credit); by account and month. Years that are not prepared are missing.
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_TrialBalanceByYear
    @Period varchar(6),
    @Years int = 5
AS
BEGIN
    SET NOCOUNT ON;

    EXEC dbo.Private_RefuseUnprepared @Period;
    SELECT V.Code, V.Title, V.Period, SUM(V.Ending) AS Ending
    FROM dbo.vwFigure AS V
    WHERE V.Period <= @Period AND V.Period > dbo.fn_PeriodAfter(@Period, -12 * @Years) AND RIGHT(V.Period, 2) = RIGHT(@Period, 2)
    GROUP BY V.Code, V.Title, V.Period
    HAVING SUM(V.Ending) <> 0
    ORDER BY V.Code, V.Period;
END;
