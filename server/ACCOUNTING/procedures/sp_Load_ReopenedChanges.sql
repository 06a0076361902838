-- Purpose: What changed in a book's month since it was closed: the batches whose lines differ from those that its last reopening took
--   out of the ledger.
-- Called by: the close cockpit.
-- Parameters:
--   @Book    JV, CD, CR, AR or AP
--   @Period  yyyyMM
-- Returns: Batch, DisplayBatch, BatchDate, Particular, Change (added, changed, removed), WasDebit, NowDebit, by batch; no row when the
--   month was never reopened
CREATE OR ALTER PROCEDURE dbo.sp_Load_ReopenedChanges
    @Book varchar(4),
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;

    IF NOT EXISTS (
        SELECT 1 FROM dbo.BookCloseLog AS L WHERE L.Book = @Book AND L.Period = @Period AND L.Action = 'REOPEN'
    )
    BEGIN
        SELECT B.Batch, B.DisplayBatch, B.BatchDate, B.Particular, '' AS Change, B.Total AS WasDebit, B.Total AS NowDebit
        FROM dbo.vwBookBatch AS B
        WHERE 1 = 0;
        RETURN;
    END;

    SELECT
        C.Batch, ISNULL(B.DisplayBatch, C.Batch) AS DisplayBatch, B.BatchDate, ISNULL(B.Particular, '') AS Particular,
        CASE WHEN C.WasLines = 0 THEN 'added' WHEN C.NowLines = 0 THEN 'removed' ELSE 'changed' END AS Change, C.WasDebit, C.NowDebit
    FROM (
        SELECT
            D.Batch, SUM(D.WasLines) AS WasLines, SUM(D.NowLines) AS NowLines, SUM(D.WasLines * D.Debit) AS WasDebit,
            SUM(D.NowLines * D.Debit) AS NowDebit, SUM(CASE WHEN D.WasLines <> D.NowLines THEN 1 ELSE 0 END) AS Differing
        FROM (
            SELECT F.Batch, F.SeqNo, F.Code, F.Dept, F.Debit, F.Credit, SUM(F.WasLines) AS WasLines, SUM(F.NowLines) AS NowLines
            FROM (
                SELECT R.Batch, R.SeqNo, R.Code, R.Dept, R.Debit, R.Credit, 1 AS WasLines, 0 AS NowLines
                FROM dbo.ReopenedLine AS R
                WHERE R.Book = @Book AND R.Period = @Period
                UNION ALL
                SELECT L.Batch, L.SeqNo, L.Code, L.Dept, L.Debit, L.Credit, 0 AS WasLines, 1 AS NowLines
                FROM dbo.vwBookLine AS L
                WHERE L.Book = @Book AND L.Period = @Period
            ) AS F
            GROUP BY F.Batch, F.SeqNo, F.Code, F.Dept, F.Debit, F.Credit
        ) AS D
        GROUP BY D.Batch
    ) AS C
    LEFT JOIN dbo.vwBookBatch AS B ON B.Book = @Book AND B.Batch = C.Batch
    WHERE C.Differing > 0
    ORDER BY B.BatchDate, C.Batch;
END;
