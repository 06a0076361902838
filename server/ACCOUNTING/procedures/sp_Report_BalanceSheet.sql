-- Purpose: The balance sheet of a month beside the month before, the same month of last year and the last year end.
-- Called by: the balance sheet templates.
-- Parameters:
--   @Period    yyyyMM
--   @Division  division whose cost centres count; "*" gives each division by itself; empty the whole hospital
--   @Detail    "A" for a row an account, "G" for a row a group
-- Returns: Division, DivisionName, Side (1 assets, 2 liabilities and equity), Section, SectionTitle, GLGroup, GroupTitle, Code, Title,
--   Amount, LastMonth, LastYear, YearEnd (assets as debits, the rest as credits); by division, side, section, group and account. The result
--   of the year, results of earlier years that no year-end close has carried, and, of a division, what it owes to or has from the other
--   divisions are rows of the equity, so that both sides agree.
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

    SELECT
        F.Division, F.DivisionName, CASE WHEN F.Section < 20 THEN 1 ELSE 2 END AS Side, F.Section, F.SectionTitle, F.GLGroup, F.GroupTitle,
        F.Code, F.Title,
        SUM(CASE WHEN F.Col = 1 THEN F.Amount ELSE 0 END) AS Amount,
        SUM(CASE WHEN F.Col = 2 THEN F.Amount ELSE 0 END) AS LastMonth,
        SUM(CASE WHEN F.Col = 3 THEN F.Amount ELSE 0 END) AS LastYear,
        SUM(CASE WHEN F.Col = 4 THEN F.Amount ELSE 0 END) AS YearEnd
    FROM (
        SELECT
            T.Col, CASE WHEN @Division = '' THEN '' ELSE V.Division END AS Division,
            CASE WHEN @Division = '' THEN '' ELSE V.DivisionName END AS DivisionName, V.Section, V.SectionTitle, V.GLGroup, V.GroupTitle,
            CASE WHEN @Detail = 'G' THEN V.GLGroup ELSE V.Code END AS Code,
            CASE WHEN @Detail = 'G' THEN V.GroupTitle ELSE V.Title END AS Title, V.Sign * V.Ending AS Amount
        FROM @At AS T
        INNER JOIN dbo.vwFigure AS V ON V.Period = T.Period
        WHERE V.Section < 40 AND (@Division IN ('', '*') OR V.Division = @Division)
        UNION ALL
        SELECT
            T.Col, CASE WHEN @Division = '' THEN '' ELSE V.Division END AS Division,
            CASE WHEN @Division = '' THEN '' ELSE V.DivisionName END AS DivisionName, 31 AS Section, 'EQUITY' AS SectionTitle,
            'RESULT' AS GLGroup, 'RESULTS NOT YET CLOSED' AS GroupTitle, 'YTD' AS Code, 'NET INCOME FOR THE YEAR TO DATE' AS Title,
            V.Credit - V.Debit AS Amount
        FROM @At AS T
        INNER JOIN dbo.vwFigure AS V ON V.Period BETWEEN T.YearFrom AND T.Period
        WHERE V.Section > 40 AND (@Division IN ('', '*') OR V.Division = @Division)
        UNION ALL
        SELECT
            T.Col, CASE WHEN @Division = '' THEN '' ELSE V.Division END AS Division,
            CASE WHEN @Division = '' THEN '' ELSE V.DivisionName END AS DivisionName, 31 AS Section, 'EQUITY' AS SectionTitle,
            'RESULT' AS GLGroup, 'RESULTS NOT YET CLOSED' AS GroupTitle, 'PRIOR' AS Code, 'RESULTS OF EARLIER YEARS' AS Title,
            CASE WHEN V.Period = T.Period THEN -V.Ending ELSE 0 END + V.Debit - V.Credit AS Amount
        FROM @At AS T
        INNER JOIN dbo.vwFigure AS V ON V.Period BETWEEN T.YearFrom AND T.Period
        WHERE V.Section > 40 AND (@Division IN ('', '*') OR V.Division = @Division)
        UNION ALL
        SELECT
            T.Col, V.Division, V.DivisionName, 32 AS Section, 'OTHER DIVISIONS' AS SectionTitle, 'INTER' AS GLGroup,
            'OTHER DIVISIONS' AS GroupTitle, 'INTER' AS Code, 'DUE TO (FROM) OTHER DIVISIONS' AS Title, V.Ending AS Amount
        FROM @At AS T
        INNER JOIN dbo.vwFigure AS V ON V.Period = T.Period
        WHERE @Division <> '' AND (@Division = '*' OR V.Division = @Division)
    ) AS F
    GROUP BY F.Division, F.DivisionName, F.Section, F.SectionTitle, F.GLGroup, F.GroupTitle, F.Code, F.Title
    HAVING
        SUM(CASE WHEN F.Col = 1 THEN F.Amount ELSE 0 END) <> 0 OR SUM(CASE WHEN F.Col = 2 THEN F.Amount ELSE 0 END) <> 0
        OR SUM(CASE WHEN F.Col = 3 THEN F.Amount ELSE 0 END) <> 0 OR SUM(CASE WHEN F.Col = 4 THEN F.Amount ELSE 0 END) <> 0
    ORDER BY F.Division, F.Section, F.GLGroup, F.Code;
END;
