-- Title: The ledger of a closed month equals its batches
-- Explanation: What a close brought into the ledger must still be what the book holds, account by account. A difference means that one
--   of the two was changed behind the guards; reopen the month, look at the batches, and close it again.
SELECT F.Book, F.Period, F.Code, F.Dept, SUM(F.LedgerAmount) AS LedgerAmount, SUM(F.BookAmount) AS BookAmount
FROM (
    SELECT G.BatchType AS Book, G.Period, G.Code, G.Dept, G.Debit - G.Credit AS LedgerAmount, CAST(0 AS money) AS BookAmount
    FROM dbo.GL AS G
    WHERE G.BatchType <> 'BB' AND G.Batch <> 'BEGBAL' AND G.Code <> ''
    UNION ALL
    SELECT L.Book, L.Period, L.Code, L.Dept, CAST(0 AS money) AS LedgerAmount, L.Debit - L.Credit AS BookAmount
    FROM dbo.vwBookLine AS L
    WHERE EXISTS (SELECT 1 FROM dbo.GL AS G WHERE G.Period = L.Period AND G.BatchType = L.Book)
) AS F
GROUP BY F.Book, F.Period, F.Code, F.Dept
HAVING SUM(F.LedgerAmount) <> SUM(F.BookAmount)
ORDER BY F.Book, F.Period, F.Code, F.Dept;
