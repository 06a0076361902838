-- Title: Prepared figures equal the ledger
-- Explanation: Where the figures of a month are not older than the ledger, its movement must be that of the ledger, account by account.
SELECT F.Period, F.Code, F.Dept, SUM(F.PreparedAmount) AS PreparedAmount, SUM(F.LedgerAmount) AS LedgerAmount
FROM (
    SELECT B.Period, B.Code, B.Dept, B.Debit - B.Credit AS PreparedAmount, CAST(0 AS money) AS LedgerAmount
    FROM dbo.PeriodBalance AS B
    INNER JOIN dbo.PreparedPeriod AS P ON P.Period = B.Period AND P.StaleSince IS NULL
    UNION ALL
    SELECT G.Period, G.Code, G.Dept, CAST(0 AS money) AS PreparedAmount, G.Debit - G.Credit AS LedgerAmount
    FROM dbo.GL AS G
    INNER JOIN dbo.PreparedPeriod AS P ON P.Period = G.Period AND P.StaleSince IS NULL
    WHERE G.BatchType <> 'BB' AND G.Code <> ''
) AS F
GROUP BY F.Period, F.Code, F.Dept
HAVING SUM(F.PreparedAmount) <> SUM(F.LedgerAmount)
ORDER BY F.Period, F.Code, F.Dept;
