-- Purpose: The lines of all uncancelled batches and vouchers of the five books in one shape, with their header's period.
-- Called by: closing, checks, reports.
-- Returns: Book, Period, Batch, SeqNo, Code, Dept, BatchDate, Description, Debit, Credit, DocType (the batch's own type), SubCode
CREATE OR ALTER VIEW dbo.vwBookLine
AS
SELECT
    'JV' AS Book, H.Period, H.Batch, D.SeqNo, D.Code, D.Dept, ISNULL(D.BatchDate, H.BatchDate) AS BatchDate, D.Description,
    D.Debit, D.Credit, H.BatchType AS DocType, D.SubCode
FROM dbo.JV AS H
INNER JOIN dbo.JVDT AS D ON D.Batch = H.Batch
WHERE H.Cancelled = 0
UNION ALL
SELECT
    'AR' AS Book, H.Period, H.Batch, D.SeqNo, D.Code, D.Dept, ISNULL(D.BatchDate, H.BatchDate) AS BatchDate, D.Description,
    D.Debit, D.Credit, H.BatchType AS DocType, CAST(NULL AS varchar(15)) AS SubCode
FROM dbo.AR AS H
INNER JOIN dbo.ARDT AS D ON D.Batch = H.Batch
UNION ALL
SELECT
    'CR' AS Book, H.Period, H.Batch, D.SeqNo, D.Code, D.Dept, ISNULL(D.BatchDate, H.BatchDate) AS BatchDate, D.Description,
    D.Debit, D.Credit, H.BatchType AS DocType, D.SubCode
FROM dbo.CRB AS H
INNER JOIN dbo.CRBDT AS D ON D.Batch = H.Batch
UNION ALL
SELECT
    'AP' AS Book, H.Period, H.Voucher AS Batch, D.SeqNo, D.Code, ISNULL(D.Dept, '') AS Dept, H.VoucherDate AS BatchDate,
    D.Description, D.Debit, D.Credit, 'AP' AS DocType, H.VendorID AS SubCode
FROM dbo.AP AS H
INNER JOIN dbo.APDT AS D ON D.Voucher = H.Voucher
WHERE H.Cancelled = 0
UNION ALL
SELECT
    'CD' AS Book, H.Period, H.CVNo AS Batch, D.SeqNo, ISNULL(D.Code, '') AS Code, ISNULL(D.Dept, '') AS Dept, H.CVDate AS BatchDate,
    D.Description, D.Debit, D.Credit, 'CD' AS DocType, H.VendorID AS SubCode
FROM dbo.CDB AS H
INNER JOIN dbo.CDBDT AS D ON D.CVNo = H.CVNo
WHERE H.Cancelled = 0;
