-- Purpose: Refuses a close while a batch of the book's month does not balance, or is unposted where batches must be posted.
-- Called by: Private_CloseBook.
-- Parameters:
--   @Book    AP, CD, CR, AR or JV
--   @Period  yyyyMM
-- Errors: 50012 naming the unposted batches, 50011 naming the unbalanced ones
CREATE OR ALTER PROCEDURE dbo.Private_RefuseBatches
    @Book varchar(4),
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Names varchar(1000);
    DECLARE @Text varchar(1400);
    CREATE TABLE #Refused (Batch varchar(20) NOT NULL);
    IF dbo.Private_Flag('ENABLETRANSACTIONPOSTING') = 1
    BEGIN
        INSERT INTO #Refused (Batch)
        SELECT B.Batch
        FROM dbo.vwBookBatch AS B
        WHERE B.Book = @Book AND B.Period = @Period AND B.Cancelled = 0 AND B.Posted = 0;
        EXEC dbo.Private_NameBatches @Book, @Names OUTPUT;
        IF @Names IS NOT NULL
        BEGIN
            SET @Text = 'Book ' + @Book + ' cannot be closed for period ' + @Period + '. Batches that are not posted: ' + @Names + '.';
            THROW 50012, @Text, 1;
        END;
    END;

    INSERT INTO #Refused (Batch)
    SELECT L.Batch
    FROM dbo.vwBookLine AS L
    WHERE L.Book = @Book AND L.Period = @Period
    GROUP BY L.Batch
    HAVING SUM(L.Debit) <> SUM(L.Credit);
    EXEC dbo.Private_NameBatches @Book, @Names OUTPUT;
    IF @Names IS NOT NULL
    BEGIN
        SET @Text = 'Book ' + @Book + ' cannot be closed for period ' + @Period + '. Batches that do not balance: ' + @Names + '.';
        THROW 50011, @Text, 1;
    END;
END;
