-- Purpose: The balance sheet of a month beside the month before, the same month of last year and the last year end.
-- Called by: the balance sheet templates.
-- Parameters:
--   @Period    yyyyMM
--   @Division  division whose cost centres count; "*" gives each division by itself; empty the whole hospital
--   @Detail    "A" for a row an account, "G" for a row a group
-- Returns: rows as Private_StatementRows gives them: A1 the month, A2 the month before, A3 the month of last year, A4 the last year end
--   (assets as debits, the rest as credits). The result of the year, results of earlier years that no year-end close has carried, and, of
--   a division, what it owes to or has from the other divisions are lines of the equity, so that both sides agree.
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_BalanceSheet
    @Period varchar(6),
    @Division varchar(10) = '',
    @Detail varchar(1) = 'A'
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @At TABLE (Col int, Period varchar(6), YearFrom varchar(6));
    EXEC dbo.Private_RefuseUnprepared @Period;
    INSERT INTO @At (Col, Period, YearFrom) VALUES (1, @Period, ''), (2, dbo.fn_PeriodAfter(@Period, -1), ''),
    (3, dbo.fn_PeriodAfter(@Period, -12), ''), (4, dbo.fn_PeriodAfter(dbo.fn_FirstPeriodOf(dbo.fn_YearOf(@Period)), -1), '');
    UPDATE @At SET YearFrom = dbo.fn_FirstPeriodOf(dbo.fn_YearOf(Period));

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
        F.Division, F.DivisionName, '' AS Dept, '' AS DeptName, F.Section, F.SectionTitle, F.GLGroup, F.GroupTitle, F.Code, F.Title,
        SUM(CASE WHEN F.Col = 1 THEN F.Amount ELSE 0 END) AS A1,
        SUM(CASE WHEN F.Col = 2 THEN F.Amount ELSE 0 END) AS A2,
        SUM(CASE WHEN F.Col = 3 THEN F.Amount ELSE 0 END) AS A3,
        SUM(CASE WHEN F.Col = 4 THEN F.Amount ELSE 0 END) AS A4, 0 AS A5
    FROM (
        SELECT
            T.Col, CASE WHEN @Division = '' THEN '' ELSE V.Division END AS Division,
            CASE WHEN @Division = '' THEN '' WHEN V.Division = '' THEN 'No division' ELSE V.Division + '   ' + V.DivisionName END AS DivisionName,
            V.Section, V.SectionTitle, V.GLGroup, V.GroupTitle,
            V.Code, V.Title, V.Sign * V.Ending AS Amount
        FROM @At AS T
        INNER JOIN dbo.vwFigure AS V ON V.Period = T.Period
        WHERE V.Section < 40 AND (@Division IN ('', '*') OR V.Division = @Division)
        UNION ALL
        SELECT
            T.Col, CASE WHEN @Division = '' THEN '' ELSE V.Division END AS Division,
            CASE WHEN @Division = '' THEN '' WHEN V.Division = '' THEN 'No division' ELSE V.Division + '   ' + V.DivisionName END AS DivisionName,
            31 AS Section, 'EQUITY' AS SectionTitle,
            'RESULT' AS GLGroup, 'NET INCOME FOR THE YEAR TO DATE' AS GroupTitle,
            'RESULT' AS Code, 'NET INCOME FOR THE YEAR TO DATE' AS Title,
            V.Credit - V.Debit AS Amount
        FROM @At AS T
        INNER JOIN dbo.vwFigure AS V ON V.Period BETWEEN T.YearFrom AND T.Period
        WHERE V.Section > 40 AND (@Division IN ('', '*') OR V.Division = @Division)
        UNION ALL
        SELECT
            T.Col, CASE WHEN @Division = '' THEN '' ELSE V.Division END AS Division,
            CASE WHEN @Division = '' THEN '' WHEN V.Division = '' THEN 'No division' ELSE V.Division + '   ' + V.DivisionName END AS DivisionName,
            31 AS Section, 'EQUITY' AS SectionTitle,
            'PRIOR' AS GLGroup, 'RESULTS OF EARLIER YEARS' AS GroupTitle, 'PRIOR' AS Code, 'RESULTS OF EARLIER YEARS' AS Title,
            CASE WHEN V.Period = T.Period THEN -V.Ending ELSE 0 END + V.Debit - V.Credit AS Amount
        FROM @At AS T
        INNER JOIN dbo.vwFigure AS V ON V.Period BETWEEN T.YearFrom AND T.Period
        WHERE V.Section > 40 AND (@Division IN ('', '*') OR V.Division = @Division)
        UNION ALL
        SELECT
            T.Col, V.Division,
            CASE WHEN V.Division = '' THEN 'No division' ELSE V.Division + '   ' + V.DivisionName END AS DivisionName,
            32 AS Section, 'OTHER DIVISIONS' AS SectionTitle, 'INTER' AS GLGroup,
            'DUE TO (FROM) OTHER DIVISIONS' AS GroupTitle,
            'INTER' AS Code, 'DUE TO (FROM) OTHER DIVISIONS' AS Title, V.Ending AS Amount
        FROM @At AS T
        INNER JOIN dbo.vwFigure AS V ON V.Period = T.Period
        WHERE @Division <> '' AND (@Division = '*' OR V.Division = @Division)
    ) AS F
    GROUP BY F.Division, F.DivisionName, F.Section, F.SectionTitle, F.GLGroup, F.GroupTitle, F.Code, F.Title
    HAVING
        SUM(CASE WHEN F.Col = 1 THEN F.Amount ELSE 0 END) <> 0 OR SUM(CASE WHEN F.Col = 2 THEN F.Amount ELSE 0 END) <> 0
        OR SUM(CASE WHEN F.Col = 3 THEN F.Amount ELSE 0 END) <> 0 OR SUM(CASE WHEN F.Col = 4 THEN F.Amount ELSE 0 END) <> 0;
    EXEC dbo.Private_StatementRows @Detail;
END;
