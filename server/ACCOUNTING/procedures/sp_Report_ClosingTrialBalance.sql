-- Purpose: The trial balance of a month by section, before and after income and expense are closed into retained earnings.
-- Called by: the trial balance templates by section, after closing, and by division.
-- Parameters:
--   @Period    yyyyMM
--   @Division  division whose cost centres count; "*" gives each division by itself; empty the whole hospital
-- Returns: Division, DivisionName, Section, SectionTitle, Code, Title, Ending (debit less credit, before closing), Closing (what the
--   closing entry adds), PostClosing; by division, section and account. Accounts without any figure are left out.
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_ClosingTrialBalance
    @Period varchar(6),
    @Division varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Retained varchar(15);
    EXEC dbo.Private_RefuseUnprepared @Period;
    SELECT @Retained = ISNULL(S.RetainedEarning, '') FROM dbo.SYS AS S;

    SELECT
        F.Division, F.DivisionName, F.Section, F.SectionTitle, F.Code, F.Title, SUM(F.Ending) AS Ending, SUM(F.Closing) AS Closing,
        SUM(F.Ending) + SUM(F.Closing) AS PostClosing
    FROM (
        SELECT
            CASE WHEN @Division = '' THEN '' ELSE V.Division END AS Division,
            CASE WHEN @Division = '' THEN '' ELSE V.DivisionName END AS DivisionName, V.Section, V.SectionTitle, V.Code, V.Title, V.Ending,
            CASE WHEN V.Section > 40 THEN -V.Ending ELSE 0 END AS Closing
        FROM dbo.vwFigure AS V
        WHERE V.Period = @Period AND (@Division IN ('', '*') OR V.Division = @Division)
        UNION ALL
        SELECT
            CASE WHEN @Division = '' THEN '' ELSE V.Division END AS Division,
            CASE WHEN @Division = '' THEN '' ELSE V.DivisionName END AS DivisionName, 31 AS Section, 'EQUITY' AS SectionTitle,
            @Retained AS Code, ISNULL(A.Description, 'RETAINED EARNINGS') AS Title, CAST(0 AS money) AS Ending, V.Ending AS Closing
        FROM dbo.vwFigure AS V
        LEFT JOIN dbo.AcctCode AS A ON A.Code = @Retained
        WHERE V.Period = @Period AND V.Section > 40 AND (@Division IN ('', '*') OR V.Division = @Division)
    ) AS F
    GROUP BY F.Division, F.DivisionName, F.Section, F.SectionTitle, F.Code, F.Title
    HAVING SUM(F.Ending) <> 0 OR SUM(F.Closing) <> 0
    ORDER BY F.Division, F.Section, F.Code;
END;
