-- Title: Every line has its header
-- Explanation: Lines whose batch or voucher has no header are in no list and no close takes them. They come from a save that was cut
--   off; enter the batch again under the same number or have the lines removed.
SELECT 'JV' AS Book, D.Batch, COUNT(*) AS Lines
FROM dbo.JVDT AS D
WHERE NOT EXISTS (SELECT 1 FROM dbo.JV AS H WHERE H.Batch = D.Batch)
GROUP BY D.Batch
UNION ALL
SELECT 'AR' AS Book, D.Batch, COUNT(*) AS Lines
FROM dbo.ARDT AS D
WHERE NOT EXISTS (SELECT 1 FROM dbo.AR AS H WHERE H.Batch = D.Batch)
GROUP BY D.Batch
UNION ALL
SELECT 'CR' AS Book, D.Batch, COUNT(*) AS Lines
FROM dbo.CRBDT AS D
WHERE NOT EXISTS (SELECT 1 FROM dbo.CRB AS H WHERE H.Batch = D.Batch)
GROUP BY D.Batch
UNION ALL
SELECT 'AP' AS Book, D.Voucher AS Batch, COUNT(*) AS Lines
FROM dbo.APDT AS D
WHERE NOT EXISTS (SELECT 1 FROM dbo.AP AS H WHERE H.Voucher = D.Voucher)
GROUP BY D.Voucher
UNION ALL
SELECT 'CD' AS Book, D.CVNo AS Batch, COUNT(*) AS Lines
FROM dbo.CDBDT AS D
WHERE NOT EXISTS (SELECT 1 FROM dbo.CDB AS H WHERE H.CVNo = D.CVNo)
GROUP BY D.CVNo
ORDER BY Book, Batch;
