-- Purpose: The headers of all five books in one shape, one row a batch or voucher.
-- Called by: closing, checks, the home view, reports.
-- Returns: Book, Batch (internal number), DisplayBatch (number that users see), Period, BatchDate, BatchType, Particular, Total,
--   Posted, Cancelled, Encoder, Payee (of vouchers)
CREATE OR ALTER VIEW dbo.vwBookBatch
AS
SELECT
    'JV' AS Book, A.Batch, ISNULL(NULLIF(NULLIF(B.PrintJVBatch, ''), '0'), A.Batch) AS DisplayBatch, A.Period, A.BatchDate, A.BatchType,
    A.Particular, A.Total, A.Posted, A.Cancelled, A.Encoder, CAST(NULL AS varchar(100)) AS Payee
FROM dbo.JV AS A
LEFT JOIN dbo.JV2 AS B ON B.Batch = A.Batch
UNION ALL
SELECT
    'AR' AS Book, A.Batch, A.Batch AS DisplayBatch, A.Period, A.BatchDate, A.BatchType,
    A.Particular, A.Total, ISNULL(A.Posted, 0) AS Posted, CAST(0 AS bit) AS Cancelled, A.Encoder, CAST(NULL AS varchar(100)) AS Payee
FROM dbo.AR AS A
UNION ALL
SELECT
    'CR' AS Book, A.Batch, A.Batch AS DisplayBatch, A.Period, A.BatchDate, A.BatchType,
    A.Particular, A.Total, ISNULL(A.Posted, 0) AS Posted, CAST(0 AS bit) AS Cancelled, A.Encoder, CAST(NULL AS varchar(100)) AS Payee
FROM dbo.CRB AS A
UNION ALL
SELECT
    'AP' AS Book, A.Voucher AS Batch, ISNULL(NULLIF(B.PrintVoucher, ''), A.Voucher) AS DisplayBatch, A.Period,
    A.VoucherDate AS BatchDate, 'AP' AS BatchType, A.Particular, A.Amount AS Total, A.Posted, A.Cancelled, A.Encoder, A.Payee
FROM dbo.AP AS A
LEFT JOIN dbo.AP2 AS B ON B.Voucher = A.Voucher
UNION ALL
SELECT
    'CD' AS Book, A.CVNo AS Batch, ISNULL(NULLIF(B.PrintCVNo, ''), A.CVNo) AS DisplayBatch, A.Period,
    A.CVDate AS BatchDate, 'CD' AS BatchType, A.Particular, A.CVAmt AS Total, A.Posted, A.Cancelled, A.Encoder, A.Payee
FROM dbo.CDB AS A
LEFT JOIN dbo.CDB2 AS B ON B.CVNo = A.CVNo;
