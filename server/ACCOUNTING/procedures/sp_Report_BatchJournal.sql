-- Purpose: The batch journal: the lines of a range of batches of one book.
-- Called by: the batch journal report.
-- Parameters:
--   @Book        AP, CD, CR, AR or JV; GL for year-end batches of the ledger
--   @StartBatch  first batch, by the number users see or the internal one
--   @EndBatch    last batch, the same
-- Returns: Batch, DisplayBatch, BatchDate, BatchType, Particular, Encoder (the name), Status ("Cancelled", "Posted" or empty),
--   SeqNo, Code, Title, Dept, Description, Debit, Credit; by batch and line
-- Errors: 50005 another book
CREATE OR ALTER PROCEDURE dbo.sp_Report_BatchJournal
    @Book varchar(4),
    @StartBatch varchar(30),
    @EndBatch varchar(30)
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Text varchar(200);
    IF ISNULL(@Book, '') NOT IN ('AP', 'CD', 'CR', 'AR', 'JV', 'GL')
    BEGIN
        SET @Text = 'There is no book "' + ISNULL(@Book, '') + '".';
        THROW 50005, @Text, 1;
    END;

    IF @Book = 'GL'
    BEGIN
        SELECT
            B.Batch, SUBSTRING(B.Batch, 3, 13) AS DisplayBatch, B.BatchDate, B.BatchType, B.Particular,
            COALESCE(NULLIF(LTRIM(RTRIM(ISNULL(E.FirstName, '') + ' ' + ISNULL(E.LastName, ''))), ''), B.Encoder) AS Encoder,
            '' AS Status,
            D.SeqNo, D.Code, A.Description AS Title, D.Dept, D.Description, D.Debit, D.Credit
        FROM dbo.GLBatch AS B
        LEFT JOIN dbo.Batchdet AS D ON D.Batch = B.Batch
        LEFT JOIN dbo.AcctCode AS A ON A.Code = D.Code
        LEFT JOIN PASSWORD.dbo.tbPasswordMain AS E ON E.EmployeeID = B.Encoder
        WHERE B.Batch BETWEEN @StartBatch AND @EndBatch
        ORDER BY B.Batch, D.SeqNo;
        RETURN;
    END;

    -- Numbers of unequal length compare rightly once they are filled up from the left.
    SELECT
        B.Batch, B.DisplayBatch, B.BatchDate, B.BatchType, B.Particular,
        COALESCE(NULLIF(LTRIM(RTRIM(ISNULL(E.FirstName, '') + ' ' + ISNULL(E.LastName, ''))), ''), B.Encoder) AS Encoder,
        CASE WHEN B.Cancelled = 1 THEN 'Cancelled' WHEN B.Posted = 1 THEN 'Posted' ELSE '' END AS Status,
        D.SeqNo, D.Code, A.Description AS Title, D.Dept, D.Description, D.Debit, D.Credit
    FROM dbo.vwBookBatch AS B
    LEFT JOIN dbo.vwBookLine AS D ON D.Book = B.Book AND D.Batch = B.Batch
    LEFT JOIN dbo.AcctCode AS A ON A.Code = D.Code
    LEFT JOIN PASSWORD.dbo.tbPasswordMain AS E ON E.EmployeeID = B.Encoder
    WHERE B.Book = @Book AND (
        RIGHT(REPLICATE('0', 30) + B.DisplayBatch, 30)
            BETWEEN RIGHT(REPLICATE('0', 30) + @StartBatch, 30) AND RIGHT(REPLICATE('0', 30) + @EndBatch, 30)
        OR RIGHT(REPLICATE('0', 30) + B.Batch, 30)
            BETWEEN RIGHT(REPLICATE('0', 30) + @StartBatch, 30) AND RIGHT(REPLICATE('0', 30) + @EndBatch, 30)
    )
    ORDER BY RIGHT(REPLICATE('0', 30) + B.Batch, 30), D.SeqNo;
END;
