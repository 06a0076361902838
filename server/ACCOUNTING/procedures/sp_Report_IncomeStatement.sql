-- Purpose: Income and expense of a month beside a month to compare, the same month of last year and both years to date.
-- Called by: the income statement templates.
-- Parameters:
--   @Period     yyyyMM
--   @LYPeriod   yyyyMM of last year; empty takes the same month one year earlier
--   @Compariod  yyyyMM to compare with; empty takes the month before
--   @Division   division whose cost centres count; "*" gives each division by itself; empty the whole hospital
--   @Dept       cost centre; "*" gives each by itself; empty takes all
--   @Capital    "Y" adds what was put on non-current asset accounts, as section 95
--   @Detail     "A" for a row an account, "G" for a row a group
-- Returns: rows as Private_StatementRows gives them: A1 the month, A2 the month to compare, A3 the month of last year, A4 the year to date,
--   A5 last year to date (income as credits, expense as debits); divisions and cost centres are empty unless asked for, their names with
--   the code before. Accounts
--   without any figure are left out.
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_IncomeStatement
    @Period varchar(6),
    @LYPeriod varchar(6) = '',
    @Compariod varchar(6) = '',
    @Division varchar(10) = '',
    @Dept varchar(10) = '',
    @Capital varchar(1) = '',
    @Detail varchar(1) = 'A'
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @From varchar(6);
    DECLARE @LYFrom varchar(6);
    DECLARE @Oldest varchar(6);
    EXEC dbo.Private_RefuseUnprepared @Period;
    IF ISNULL(@LYPeriod, '') = '' SET @LYPeriod = dbo.fn_PeriodAfter(@Period, -12);
    IF ISNULL(@Compariod, '') = '' SET @Compariod = dbo.fn_PeriodAfter(@Period, -1);
    SET @From = dbo.fn_FirstPeriodOf(dbo.fn_YearOf(@Period));
    SET @LYFrom = dbo.fn_FirstPeriodOf(dbo.fn_YearOf(@LYPeriod));
    SET @Oldest = CASE WHEN @Compariod < @LYFrom THEN @Compariod ELSE @LYFrom END;

    CREATE TABLE #Line (
        Division varchar(10) NOT NULL, DivisionName varchar(120) NOT NULL, Dept varchar(10) NOT NULL, DeptName varchar(120) NOT NULL,
        Section int NOT NULL, SectionTitle varchar(60) NOT NULL, GLGroup varchar(10) NOT NULL, GroupTitle varchar(100) NOT NULL,
        Code varchar(15) NOT NULL, Title varchar(100) NOT NULL, A1 money NOT NULL, A2 money NOT NULL, A3 money NOT NULL, A4 money NOT NULL,
        A5 money NOT NULL
    );
    INSERT INTO #Line (
        Division, DivisionName, Dept, DeptName, Section, SectionTitle, GLGroup, GroupTitle, Code, Title, A1, A2, A3, A4, A5
    )
    SELECT
        F.Division, F.DivisionName, F.Dept, F.DeptName, F.Section, F.SectionTitle, F.GLGroup, F.GroupTitle, F.Code, F.Title,
        SUM(CASE WHEN F.Period = @Period THEN F.Amount ELSE 0 END) AS A1,
        SUM(CASE WHEN F.Period = @Compariod THEN F.Amount ELSE 0 END) AS A2,
        SUM(CASE WHEN F.Period = @LYPeriod THEN F.Amount ELSE 0 END) AS A3,
        SUM(CASE WHEN F.Period BETWEEN @From AND @Period THEN F.Amount ELSE 0 END) AS A4,
        SUM(CASE WHEN F.Period BETWEEN @LYFrom AND @LYPeriod THEN F.Amount ELSE 0 END) AS A5
    FROM (
        SELECT
            CASE WHEN @Division = '' THEN '' ELSE V.Division END AS Division,
            CASE WHEN @Division = '' THEN '' WHEN V.Division = '' THEN 'No division' ELSE V.Division + '   ' + V.DivisionName END AS DivisionName,
            CASE WHEN @Dept = '' THEN '' ELSE V.Dept END AS Dept,
            CASE WHEN @Dept = '' THEN '' WHEN V.Dept = '' THEN 'Without a department' ELSE V.Dept + '   ' + V.DeptName END AS DeptName,
            CASE WHEN V.Section = 12 THEN 95 ELSE V.Section END AS Section,
            CASE WHEN V.Section = 12 THEN 'CAPITAL EXPENDITURES' ELSE V.SectionTitle END AS SectionTitle,
            V.GLGroup, V.GroupTitle, V.Code, V.Title, V.Period,
            CASE WHEN V.Section = 12 THEN V.Debit ELSE V.Sign * (V.Debit - V.Credit) END AS Amount
        FROM dbo.vwFigure AS V
        WHERE V.Period BETWEEN @Oldest AND @Period AND (V.Section > 40 OR (@Capital = 'Y' AND V.Section = 12))
          AND (@Division IN ('', '*') OR V.Division = @Division) AND (@Dept IN ('', '*') OR V.Dept = @Dept)
    ) AS F
    GROUP BY
        F.Division, F.DivisionName, F.Dept, F.DeptName, F.Section, F.SectionTitle, F.GLGroup, F.GroupTitle, F.Code, F.Title
    HAVING
        SUM(CASE WHEN F.Period BETWEEN @From AND @Period THEN ABS(F.Amount) ELSE 0 END) <> 0
        OR SUM(CASE WHEN F.Period BETWEEN @LYFrom AND @LYPeriod THEN ABS(F.Amount) ELSE 0 END) <> 0
        OR SUM(CASE WHEN F.Period = @Compariod THEN ABS(F.Amount) ELSE 0 END) <> 0;
    EXEC dbo.Private_StatementRows @Detail;
END;
