-- Purpose: Finds the batches that a close must refuse and puts them into words.
-- Called by: Private_RefuseBatches.
-- Parameters:
--   @Book    AP, CD, CR, AR or JV
--   @Period  yyyyMM
--   @Fault   UNPOSTED (batches of the book) or UNBALANCED (as the ledger holds them)
--   @Names   up to ten batches by the number users see, with the internal number behind it where that differs, and the count of
--            the rest; NULL when there is none
CREATE OR ALTER PROCEDURE dbo.Private_NameBatches
    @Book varchar(4),
    @Period varchar(6),
    @Fault varchar(10),
    @Names varchar(1000) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Batch varchar(20);
    DECLARE @Display varchar(30);
    DECLARE @Count int;
    DECLARE @Rest int;
    CREATE TABLE #Refused (Batch varchar(20) NOT NULL);
    IF @Fault = 'UNPOSTED'
        INSERT INTO #Refused (Batch)
        SELECT B.Batch
        FROM dbo.vwBookBatch AS B
        WHERE B.Book = @Book AND B.Period = @Period AND B.Cancelled = 0 AND B.Posted = 0;
    ELSE
        INSERT INTO #Refused (Batch)
        SELECT G.Batch
        FROM dbo.GL AS G
        WHERE G.Period = @Period AND G.BatchType = @Book
        GROUP BY G.Batch
        HAVING SUM(G.Debit) <> SUM(G.Credit);

    SET @Names = NULL;
    SET @Count = 0;
    SELECT @Batch = MIN(R.Batch) FROM #Refused AS R;
    WHILE @Batch IS NOT NULL AND @Count < 10
    BEGIN
        SET @Display = @Batch;
        SELECT @Display = B.DisplayBatch FROM dbo.vwBookBatch AS B WHERE B.Book = @Book AND B.Batch = @Batch;
        SET @Names = ISNULL(@Names + ', ', '') + @Display + CASE WHEN @Display <> @Batch THEN ' (' + @Batch + ')' ELSE '' END;
        SET @Count = @Count + 1;
        SELECT @Batch = MIN(R.Batch) FROM #Refused AS R WHERE R.Batch > @Batch;
    END;
    SELECT @Rest = COUNT(*) - @Count FROM #Refused AS R;
    IF @Rest > 0 SET @Names = @Names + ' and ' + CAST(@Rest AS varchar(12)) + ' more';
END;
