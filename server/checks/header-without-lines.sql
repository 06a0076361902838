-- Title: Every batch has lines and its own totals
-- Explanation: The header of a JV, AR or CR batch must have lines, and the debits and credits it states must be theirs.
SELECT H.Book, H.Batch, H.Debits, H.Credits, SUM(ISNULL(L.Debit, 0)) AS LineDebits, SUM(ISNULL(L.Credit, 0)) AS LineCredits
FROM (
    SELECT 'JV' AS Book, A.Batch, A.Debits, A.Credits FROM dbo.JV AS A WHERE A.Cancelled = 0
    UNION ALL
    SELECT 'AR' AS Book, A.Batch, A.Debits, A.Credits FROM dbo.AR AS A
    UNION ALL
    SELECT 'CR' AS Book, A.Batch, A.Debits, A.Credits FROM dbo.CRB AS A
) AS H
LEFT JOIN dbo.vwBookLine AS L ON L.Book = H.Book AND L.Batch = H.Batch
GROUP BY H.Book, H.Batch, H.Debits, H.Credits
HAVING COUNT(L.Batch) = 0 OR SUM(ISNULL(L.Debit, 0)) <> H.Debits OR SUM(ISNULL(L.Credit, 0)) <> H.Credits
ORDER BY H.Book, H.Batch;
