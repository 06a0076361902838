-- Purpose: The figures of each month of a range by account and, where asked for, cost centre.
-- Called by: the templates with a column for each month or department.
-- Parameters:
--   @Period1  yyyyMM, the first month; empty takes the first of the accounting year of the last
--   @Period2  yyyyMM, the last month; it must be prepared
--   @Types    the account types that count, e.g. "IN" or "INEX"; empty takes all
--   @ByDept   "Y" for a row of each cost centre
-- Returns: Period, Section, SectionTitle, GLGroup, GroupTitle, Code, Title, Type, Dept, DeptName (empty unless asked for), Movement and
--   Ending
--   (debit less credit), Amount (the movement: income as credits, all others as debits); by section, group, account, cost centre, month
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_MonthlyFigures
    @Period1 varchar(6),
    @Period2 varchar(6),
    @Types varchar(10) = '',
    @ByDept varchar(1) = ''
AS
BEGIN
    SET NOCOUNT ON;

    EXEC dbo.Private_RefuseUnprepared @Period2;
    IF ISNULL(@Period1, '') = '' SET @Period1 = dbo.fn_FirstPeriodOf(dbo.fn_YearOf(@Period2));
    SELECT
        F.Period, F.Section, F.SectionTitle, F.GLGroup, F.GroupTitle, F.Code, F.Title, F.Type, F.Dept, F.DeptName,
        SUM(F.Movement) AS Movement, SUM(F.Ending) AS Ending,
        SUM(CASE WHEN F.Type = 'IN' THEN -F.Movement ELSE F.Movement END) AS Amount
    FROM (
        SELECT
            V.Period, V.Section, V.SectionTitle, V.GLGroup, V.GroupTitle, V.Code, V.Title, V.Type,
            CASE WHEN @ByDept = 'Y' THEN V.Dept ELSE '' END AS Dept, CASE WHEN @ByDept = 'Y' THEN V.DeptName ELSE '' END AS DeptName,
            V.Debit - V.Credit AS Movement, V.Ending
        FROM dbo.vwFigure AS V
        WHERE V.Period BETWEEN @Period1 AND @Period2 AND (@Types = '' OR CHARINDEX(V.Type, @Types) > 0)
    ) AS F
    GROUP BY F.Period, F.Section, F.SectionTitle, F.GLGroup, F.GroupTitle, F.Code, F.Title, F.Type, F.Dept, F.DeptName
    HAVING SUM(F.Movement) <> 0 OR SUM(F.Ending) <> 0
    ORDER BY F.Section, F.GLGroup, F.Code, F.Dept, F.Period;
END;
