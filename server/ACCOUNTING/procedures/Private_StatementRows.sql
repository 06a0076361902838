-- Purpose: Turns the lines of a statement into its rows: lines, totals of groups and sections, results. The template prints the headings.
-- Called by: sp_Report_IncomeStatement, sp_Report_BalanceSheet, with their lines in #Line (Division, DivisionName, Dept, DeptName, Section,
--   SectionTitle, GLGroup, GroupTitle, Code, Title, A1 to A5).
-- Parameters:
--   @Detail  "A" for a row an account below its group, "G" for a row a group
-- Returns: Division, DivisionName, Dept, DeptName, Kind (D line, S subtotal, R result, T last total), Level (of indent, from 0), Section,
--   SectionTitle (empty of a result that stands by itself), GLGroup, GroupTitle (empty unless by accounts), Code, Title, A1 to A5, Base1
--   and Base4 (what A1 and A4 of the revenue come to, for shares); in the order of print
CREATE OR ALTER PROCEDURE dbo.Private_StatementRows
    @Detail varchar(1)
AS
BEGIN
    SET NOCOUNT ON;

    -- Results stand behind section LastSection and reach from FromSection; one is shown where there are lines from NeedsSection on.
    DECLARE @Result TABLE (LastSection int, FromSection int, NeedsSection int, Kind varchar(1), Title varchar(60));
    INSERT INTO @Result (LastSection, FromSection, NeedsSection, Kind, Title) VALUES
    (12, 11, 11, 'T', 'TOTAL ASSETS'),
    (22, 21, 21, 'R', 'TOTAL LIABILITIES'),
    (39, 21, 21, 'T', 'TOTAL LIABILITIES AND EQUITY'),
    (51, 41, 51, 'R', 'NET REVENUE'),
    (61, 41, 61, 'R', 'INCOME AFTER OPERATING EXPENSES'),
    (71, 41, 71, 'R', 'INCOME FROM OPERATIONS'),
    (91, 41, 41, 'T', 'NET INCOME (LOSS)'),
    (95, 41, 95, 'T', 'EXCESS AFTER CAPITAL EXPENDITURES');

    WITH Line AS (
        SELECT
            L.Division, L.DivisionName, L.Dept, L.DeptName, L.Section, L.SectionTitle, L.GLGroup, L.GroupTitle,
            CASE WHEN @Detail = 'G' THEN L.GLGroup ELSE L.Code END AS Code,
            CASE WHEN @Detail = 'G' THEN L.GroupTitle ELSE L.Title END AS Title,
            L.A1, L.A2, L.A3, L.A4, L.A5
        FROM #Line AS L
    ),

    Printed AS (
        SELECT
            L.Division, L.DivisionName, L.Dept, L.DeptName, L.Section, L.SectionTitle, 1 AS Step, L.GLGroup,
            CASE WHEN @Detail = 'A' THEN L.GroupTitle ELSE '' END AS GroupTitle, 1 AS Part, L.Code, 'D' AS Kind,
            CASE WHEN @Detail = 'A' THEN 2 ELSE 1 END AS Level, L.Title,
            SUM(L.A1) AS A1, SUM(L.A2) AS A2, SUM(L.A3) AS A3, SUM(L.A4) AS A4, SUM(L.A5) AS A5
        FROM Line AS L
        GROUP BY L.Division, L.DivisionName, L.Dept, L.DeptName, L.Section, L.SectionTitle, L.GLGroup, L.GroupTitle, L.Code, L.Title
        UNION ALL
        SELECT
            L.Division, L.DivisionName, L.Dept, L.DeptName, L.Section, L.SectionTitle, 1 AS Step, L.GLGroup, L.GroupTitle,
            2 AS Part, '' AS Code, 'S' AS Kind, 1 AS Level,
            'TOTAL ' + L.GroupTitle AS Title, SUM(L.A1) AS A1, SUM(L.A2) AS A2, SUM(L.A3) AS A3, SUM(L.A4) AS A4, SUM(L.A5) AS A5
        FROM Line AS L
        WHERE @Detail = 'A'
        GROUP BY L.Division, L.DivisionName, L.Dept, L.DeptName, L.Section, L.SectionTitle, L.GLGroup, L.GroupTitle
        HAVING COUNT(*) > 1
        UNION ALL
        SELECT
            L.Division, L.DivisionName, L.Dept, L.DeptName, L.Section, L.SectionTitle, 8 AS Step, '' AS GLGroup,
            '' AS GroupTitle, 0 AS Part, '' AS Code, 'S' AS Kind, 0 AS Level,
            'TOTAL ' + L.SectionTitle AS Title, SUM(L.A1) AS A1, SUM(L.A2) AS A2, SUM(L.A3) AS A3, SUM(L.A4) AS A4, SUM(L.A5) AS A5
        FROM Line AS L
        GROUP BY L.Division, L.DivisionName, L.Dept, L.DeptName, L.Section, L.SectionTitle
        UNION ALL
        SELECT
            L.Division, L.DivisionName, L.Dept, L.DeptName, R.LastSection AS Section,
            MAX(CASE WHEN L.Section = R.LastSection THEN L.SectionTitle ELSE '' END) AS SectionTitle,
            9 AS Step, '' AS GLGroup, '' AS GroupTitle,
            0 AS Part, '' AS Code, R.Kind, 0 AS Level, R.Title,
            SUM(CASE WHEN L.Section IN (51, 61, 71, 91, 95) THEN -L.A1 ELSE L.A1 END) AS A1,
            SUM(CASE WHEN L.Section IN (51, 61, 71, 91, 95) THEN -L.A2 ELSE L.A2 END) AS A2,
            SUM(CASE WHEN L.Section IN (51, 61, 71, 91, 95) THEN -L.A3 ELSE L.A3 END) AS A3,
            SUM(CASE WHEN L.Section IN (51, 61, 71, 91, 95) THEN -L.A4 ELSE L.A4 END) AS A4,
            SUM(CASE WHEN L.Section IN (51, 61, 71, 91, 95) THEN -L.A5 ELSE L.A5 END) AS A5
        FROM @Result AS R
        INNER JOIN Line AS L ON L.Section BETWEEN R.FromSection AND R.LastSection
        GROUP BY L.Division, L.DivisionName, L.Dept, L.DeptName, R.LastSection, R.NeedsSection, R.Kind, R.Title
        HAVING MAX(L.Section) >= R.NeedsSection
    ),

    Base AS (
        SELECT
            L.Division, L.Dept, SUM(CASE WHEN L.Section IN (41, 42) THEN L.A1 ELSE 0 END) AS Base1,
            SUM(CASE WHEN L.Section IN (41, 42) THEN L.A4 ELSE 0 END) AS Base4
        FROM Line AS L
        GROUP BY L.Division, L.Dept
    )

    SELECT
        P.Division, P.DivisionName, P.Dept, P.DeptName, P.Kind, P.Level, P.Section, P.SectionTitle, P.GLGroup, P.GroupTitle,
        P.Code, P.Title,
        P.A1, P.A2, P.A3, P.A4, P.A5, B.Base1, B.Base4
    FROM Printed AS P
    INNER JOIN Base AS B ON B.Division = P.Division AND B.Dept = P.Dept
    ORDER BY P.Division, P.Dept, P.Section, P.Step, P.GLGroup, P.Part, P.Code;
END;
