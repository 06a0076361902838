-- Title: Every batch states the totals of its lines
-- Explanation: The debits and credits in the header of a JV, AR or CR batch must be those of its lines; a batch that was saved
--   without lines states nothing.
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
HAVING SUM(ISNULL(L.Debit, 0)) <> H.Debits OR SUM(ISNULL(L.Credit, 0)) <> H.Credits
ORDER BY H.Book, H.Batch;
