-- Title: Every batch balances
-- Explanation: The debits of each uncancelled batch or voucher must equal its credits. A batch listed here cannot be closed; open it
--   and put the missing line in.
SELECT L.Book, L.Period, L.Batch, SUM(L.Debit) AS Debits, SUM(L.Credit) AS Credits, SUM(L.Debit) - SUM(L.Credit) AS Difference
FROM dbo.vwBookLine AS L
GROUP BY L.Book, L.Period, L.Batch
HAVING SUM(L.Debit) <> SUM(L.Credit)
ORDER BY L.Book, L.Period, L.Batch;
