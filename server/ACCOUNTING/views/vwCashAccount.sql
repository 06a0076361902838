-- Purpose: The accounts that are cash: those of banks, and those in the groups of the cash accounts of the settings.
-- Called by: the cash statements.
-- Returns: Code, Title
CREATE OR ALTER VIEW dbo.vwCashAccount
AS
SELECT A.Code, A.Description AS Title
FROM dbo.AcctCode AS A
WHERE A.Mast_Dept <> 'MAS' AND (
    A.IsBankAcct = 1
    OR A.GLGroup IN (SELECT B.GLGroup FROM dbo.AcctCode AS B INNER JOIN dbo.SYS AS S ON B.Code IN (S.CashInBank, S.CRBAcct))
);
