-- Title: Lines lie in the month of their batch
-- Explanation: The period of a line must be that of its header, and that of the batch's date. A difference would put a line into
--   another month than the guards of closed months watch.
SELECT 'JV' AS Book, D.Batch, D.SeqNo, D.Period AS LinePeriod, H.Period AS BatchPeriod, H.BatchDate
FROM dbo.JVDT AS D
INNER JOIN dbo.JV AS H ON H.Batch = D.Batch
WHERE D.Period <> H.Period OR CONVERT(varchar(6), H.BatchDate, 112) <> H.Period
UNION ALL
SELECT 'AR' AS Book, D.Batch, D.SeqNo, D.Period AS LinePeriod, H.Period AS BatchPeriod, H.BatchDate
FROM dbo.ARDT AS D
INNER JOIN dbo.AR AS H ON H.Batch = D.Batch
WHERE D.Period <> H.Period OR CONVERT(varchar(6), H.BatchDate, 112) <> H.Period
UNION ALL
SELECT 'CR' AS Book, D.Batch, D.SeqNo, D.Period AS LinePeriod, H.Period AS BatchPeriod, H.BatchDate
FROM dbo.CRBDT AS D
INNER JOIN dbo.CRB AS H ON H.Batch = D.Batch
WHERE D.Period <> H.Period OR CONVERT(varchar(6), H.BatchDate, 112) <> H.Period
ORDER BY Book, Batch, SeqNo;
