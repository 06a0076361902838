-- Purpose: What moved between a month and the month before: balances of the balance sheet, movements of income and expense.
-- Called by: the monthly flux report.
-- Parameters:
--   @Period  yyyyMM
-- Returns: Section, SectionTitle, GLGroup, GroupTitle, Code, Title, ThisMonth, LastMonth (liabilities, equity and income as credits);
--   by section, group and account
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_MonthlyFlux
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Before varchar(6);
    EXEC dbo.Private_RefuseUnprepared @Period;
    SET @Before = dbo.fn_PeriodAfter(@Period, -1);
    SELECT
        F.Section, F.SectionTitle, F.GLGroup, F.GroupTitle, F.Code, F.Title,
        SUM(CASE WHEN F.Period = @Period THEN F.Amount ELSE 0 END) AS ThisMonth,
        SUM(CASE WHEN F.Period = @Before THEN F.Amount ELSE 0 END) AS LastMonth
    FROM (
        SELECT
            V.Period, V.Section, V.SectionTitle, V.GLGroup, V.GroupTitle, V.Code, V.Title,
            V.Sign * CASE WHEN V.Section < 40 THEN V.Ending ELSE V.Debit - V.Credit END AS Amount
        FROM dbo.vwFigure AS V
        WHERE V.Period IN (@Before, @Period)
    ) AS F
    GROUP BY F.Section, F.SectionTitle, F.GLGroup, F.GroupTitle, F.Code, F.Title
    HAVING
        SUM(CASE WHEN F.Period = @Period THEN F.Amount ELSE 0 END) <> 0
        OR SUM(CASE WHEN F.Period = @Before THEN F.Amount ELSE 0 END) <> 0
    ORDER BY F.Section, F.GLGroup, F.Code;
END;
