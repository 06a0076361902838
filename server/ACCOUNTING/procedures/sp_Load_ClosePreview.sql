-- Purpose: What closing a book's month would bring into the ledger: its uncancelled batches with their totals, and what would refuse it.
-- Called by: the period dialog before a close, the close cockpit.
-- Parameters:
--   @Book    JV, CD, CR, AR or AP
--   @Period  yyyyMM
-- Returns: Batch, DisplayBatch, BatchDate, Particular, Lines, Debit, Credit, Posted, Trouble (empty, "unbalanced", "not posted"), first
--   those with trouble. Batches that are not posted are none where ENABLETRANSACTIONPOSTING is not "Y".
-- Errors: 50006 no period
CREATE OR ALTER PROCEDURE dbo.sp_Load_ClosePreview
    @Book varchar(4),
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Posting bit;
    EXEC dbo.Private_CheckPeriod @Period;
    SET @Posting = dbo.Private_Flag('ENABLETRANSACTIONPOSTING');
    SELECT P.Batch, P.DisplayBatch, P.BatchDate, P.Particular, P.Lines, P.Debit, P.Credit, P.Posted, P.Trouble
    FROM (
        SELECT
            B.Batch, B.DisplayBatch, B.BatchDate, B.Particular, ISNULL(S.Lines, 0) AS Lines, ISNULL(S.Debit, 0) AS Debit,
            ISNULL(S.Credit, 0) AS Credit, B.Posted,
            CASE
                WHEN ISNULL(S.Debit, 0) <> ISNULL(S.Credit, 0) THEN 'unbalanced'
                WHEN @Posting = 1 AND B.Posted = 0 THEN 'not posted'
                ELSE ''
            END AS Trouble
        FROM dbo.vwBookBatch AS B
        LEFT JOIN (
            SELECT L.Batch, COUNT(*) AS Lines, SUM(L.Debit) AS Debit, SUM(L.Credit) AS Credit
            FROM dbo.vwBookLine AS L
            WHERE L.Book = @Book AND L.Period = @Period
            GROUP BY L.Batch
        ) AS S ON S.Batch = B.Batch
        WHERE B.Book = @Book AND B.Period = @Period AND B.Cancelled = 0
    ) AS P
    ORDER BY CASE WHEN P.Trouble = '' THEN 1 ELSE 0 END, P.BatchDate, P.Batch;
END;
