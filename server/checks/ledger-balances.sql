-- Title: The ledger balances
-- Explanation: Debits and credits of the ledger must be equal for each month and book, and so must the opening figures of a year.
SELECT G.Period, G.BatchType, SUM(G.Debit) AS Debits, SUM(G.Credit) AS Credits, SUM(G.Debit) - SUM(G.Credit) AS Difference
FROM dbo.GL AS G
WHERE G.Batch <> 'BEGBAL'
GROUP BY G.Period, G.BatchType
HAVING SUM(G.Debit) <> SUM(G.Credit)
ORDER BY G.Period, G.BatchType;
