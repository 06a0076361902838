-- Purpose: The schedule of the accounts of one group, or of all: balance before, movement, balance after.
-- Called by: the schedules of the balance sheet and of income and expense.
-- Parameters:
--   @Period   yyyyMM
--   @GLGroup  group; empty takes all of the types
--   @Types    the account types that count, e.g. "ASLIEQ"; empty takes all
-- Returns: Section, SectionTitle, GLGroup, GroupTitle, Code, Title, Beginning, Debit, Credit, Ending (balances of liabilities, equity and
--   income as credits), YearToDate (the movement of the accounting year, with the same sign); by section, group and account
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_Schedule
    @Period varchar(6),
    @GLGroup varchar(10) = '',
    @Types varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @From varchar(6);
    EXEC dbo.Private_RefuseUnprepared @Period;
    SET @From = dbo.fn_FirstPeriodOf(dbo.fn_YearOf(@Period));
    SELECT
        V.Section, V.SectionTitle, V.GLGroup, V.GroupTitle, V.Code, V.Title,
        SUM(CASE WHEN V.Period = @Period THEN V.Sign * V.Beginning ELSE 0 END) AS Beginning,
        SUM(CASE WHEN V.Period = @Period THEN V.Debit ELSE 0 END) AS Debit,
        SUM(CASE WHEN V.Period = @Period THEN V.Credit ELSE 0 END) AS Credit,
        SUM(CASE WHEN V.Period = @Period THEN V.Sign * V.Ending ELSE 0 END) AS Ending,
        SUM(V.Sign * (V.Debit - V.Credit)) AS YearToDate
    FROM dbo.vwFigure AS V
    WHERE V.Period BETWEEN @From AND @Period AND (@GLGroup = '' OR V.GLGroup = @GLGroup) AND (@Types = '' OR CHARINDEX(V.Type, @Types) > 0)
    GROUP BY V.Section, V.SectionTitle, V.GLGroup, V.GroupTitle, V.Code, V.Title
    HAVING
        SUM(CASE WHEN V.Period = @Period THEN ABS(V.Beginning) + V.Debit + V.Credit + ABS(V.Ending) ELSE 0 END) <> 0
    ORDER BY V.Section, V.GLGroup, V.Code;
END;
