-- Purpose: The prepared balances with what a statement needs to place them: account, section, group, cost centre and division.
-- Called by: the statement procedures.
-- Returns: Period, Code, Title, Type, GLGroup, GroupTitle, Section (number, in the order of a statement), SectionTitle, Sign (-1 for
--   liabilities, equity and income, whose balances are credits), Dept, DeptName, Division, DivisionName, Beginning, Debit, Credit,
--   Ending (debit less credit). An account that is not in the chart counts as another expense, so that no figure is lost.
CREATE OR ALTER VIEW dbo.vwFigure
AS
SELECT
    F.Period, F.Code, F.Title, F.Type, F.GLGroup, F.GroupTitle,
    CASE
        WHEN F.Type = 'AS' AND F.Class <> 'O' THEN 11
        WHEN F.Type = 'AS' THEN 12
        WHEN F.Type = 'LI' AND F.Class <> 'O' THEN 21
        WHEN F.Type = 'LI' THEN 22
        WHEN F.Type = 'EQ' THEN 31
        WHEN F.Type = 'IN' AND F.Class = 'O' THEN 81
        WHEN F.Type = 'IN' AND F.Class = 'S' THEN 42
        WHEN F.Type = 'IN' THEN 41
        WHEN F.Class = 'D' THEN 51
        WHEN F.Class = 'P' THEN 61
        WHEN F.Class = 'C' THEN 71
        ELSE 91
    END AS Section,
    CASE
        WHEN F.Type = 'AS' AND F.Class <> 'O' THEN 'CURRENT ASSETS'
        WHEN F.Type = 'AS' THEN 'NON-CURRENT ASSETS'
        WHEN F.Type = 'LI' AND F.Class <> 'O' THEN 'CURRENT LIABILITIES'
        WHEN F.Type = 'LI' THEN 'NON-CURRENT LIABILITIES'
        WHEN F.Type = 'EQ' THEN 'EQUITY'
        WHEN F.Type = 'IN' AND F.Class = 'O' THEN 'OTHER INCOME'
        WHEN F.Type = 'IN' AND F.Class = 'S' THEN 'SPECIAL INCOME'
        WHEN F.Type = 'IN' THEN 'REVENUE FROM OPERATIONS'
        WHEN F.Class = 'D' THEN 'DISCOUNTS AND ALLOWANCES'
        WHEN F.Class = 'P' THEN 'OPERATING EXPENSES'
        WHEN F.Class = 'C' THEN 'GENERAL EXPENSES'
        ELSE 'OTHER EXPENSES'
    END AS SectionTitle,
    CASE WHEN F.Type IN ('LI', 'EQ', 'IN') THEN -1 ELSE 1 END AS Sign,
    F.Dept, F.DeptName, F.Division, F.DivisionName, F.Beginning, F.Debit, F.Credit, F.Ending
FROM (
    SELECT
        P.Period, P.Code, ISNULL(A.Description, '(not in the chart)') AS Title, ISNULL(A.Type, 'EX') AS Type,
        ISNULL(NULLIF(A.Class, ''), ISNULL(G.Class, '')) AS Class, ISNULL(A.GLGroup, '') AS GLGroup,
        ISNULL(G.Description, '(no group)') AS GroupTitle, P.Dept, ISNULL(C.Description, '') AS DeptName,
        ISNULL(C.DeptCode, '') AS Division, ISNULL(D.DEPARTMENT, '') AS DivisionName,
        P.Beginning, P.Debit, P.Credit, P.Ending
    FROM dbo.PeriodBalance AS P
    LEFT JOIN dbo.AcctCode AS A ON A.Code = P.Code
    LEFT JOIN dbo.GLGROUP AS G ON G.GLGroup = A.GLGroup
    LEFT JOIN dbo.CstCtr AS C ON C.CstCtr = P.Dept
    LEFT JOIN dbo.DEPARTMENTS AS D ON D.CODE = C.DeptCode
) AS F;
