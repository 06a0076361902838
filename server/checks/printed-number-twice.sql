-- Title: No printed number stands on two documents
-- Explanation: A printed number names one journal voucher, one AP voucher or one check voucher. A mask without the month or without a
--   series gives the same number again.
SELECT 'JV' AS Book, J.PrintJVBatch AS PrintedNumber, COUNT(*) AS Documents
FROM dbo.JV2 AS J
WHERE ISNULL(J.PrintJVBatch, '') <> '' AND ISNULL(J.JVSeries, '') <> ''
GROUP BY J.PrintJVBatch
HAVING COUNT(*) > 1
UNION ALL
SELECT 'AP' AS Book, A.PrintVoucher AS PrintedNumber, COUNT(*) AS Documents
FROM dbo.AP2 AS A
WHERE ISNULL(A.PrintVoucher, '') <> '' AND ISNULL(A.APSeries, '') <> ''
GROUP BY A.PrintVoucher
HAVING COUNT(*) > 1
UNION ALL
SELECT 'CD' AS Book, C.PrintCVNo AS PrintedNumber, COUNT(*) AS Documents
FROM dbo.CDB2 AS C
WHERE ISNULL(C.PrintCVNo, '') <> '' AND ISNULL(C.CVSeries, '') <> ''
GROUP BY C.PrintCVNo
HAVING COUNT(*) > 1
ORDER BY Book, PrintedNumber;
