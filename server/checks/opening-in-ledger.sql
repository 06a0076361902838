-- Title: The ledger opens a year with its opening balances
-- Explanation: Where a year's opening stands in the ledger it must be the opening balances of the year. A difference comes from balances
--   that were changed after they were posted; run Post Forwarded Balances again.
SELECT F.Year, F.Code, SUM(F.Ledger) AS Ledger, SUM(F.Opening) AS Opening
FROM (
    SELECT dbo.fn_YearOf(G.Period) AS Year, G.Code, G.Debit - G.Credit AS Ledger, CAST(0 AS money) AS Opening
    FROM dbo.GL AS G
    WHERE G.BatchType = 'BB'
    UNION ALL
    SELECT B.Year, B.Acct AS Code, CAST(0 AS money) AS Ledger, B.Debit - B.Credit AS Opening
    FROM dbo.BegBalance AS B
    WHERE EXISTS (SELECT 1 FROM dbo.GL AS G WHERE G.Period = dbo.fn_FirstPeriodOf(B.Year) AND G.BatchType = 'BB')
) AS F
GROUP BY F.Year, F.Code
HAVING SUM(F.Ledger) <> SUM(F.Opening)
ORDER BY F.Year, F.Code;
