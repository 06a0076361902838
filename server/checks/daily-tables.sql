-- Title: Day figures equal their batches
-- Explanation: The day figures of an AR or CR batch that the entry screen wrote must be the lines of the batch. Saving the batch again
--   writes them anew.
SELECT F.Book, F.Batch, F.Code, SUM(F.LineAmount) AS LineAmount, SUM(F.DayAmount) AS DayAmount
FROM (
    SELECT 'AR' AS Book, L.Batch, L.Code, L.Debit - L.Credit AS LineAmount, CAST(0 AS money) AS DayAmount
    FROM dbo.ARDT AS L
    INNER JOIN dbo.AR AS H ON H.Batch = L.Batch AND H.BatchType = 'AR' AND H.ReportDate IS NULL
    UNION ALL
    SELECT 'AR' AS Book, D.Batch, D.Code, CAST(0 AS money) AS LineAmount,
        CASE WHEN D.Side = 'D' THEN D.Amount ELSE -D.Amount END AS DayAmount
    FROM dbo.tbDailyCharges AS D
    UNION ALL
    SELECT 'CR' AS Book, L.Batch, L.Code, L.Debit - L.Credit AS LineAmount, CAST(0 AS money) AS DayAmount
    FROM dbo.CRBDT AS L
    INNER JOIN dbo.CRB AS H ON H.Batch = L.Batch AND H.BatchType = 'CR' AND H.ReportDate IS NULL
    UNION ALL
    SELECT 'CR' AS Book, D.Batch, D.Code, CAST(0 AS money) AS LineAmount,
        CASE WHEN D.Side = 'D' THEN D.Amount ELSE -D.Amount END AS DayAmount
    FROM dbo.tbDailyCollection AS D
) AS F
GROUP BY F.Book, F.Batch, F.Code
HAVING SUM(F.LineAmount) <> SUM(F.DayAmount)
ORDER BY F.Book, F.Batch, F.Code;
