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
    IF dbo.Private_Flag('ENABLETRANSACTIONPOSTING') = 1
    BEGIN
        EXEC dbo.Private_NameBatches @Book, @Period, 'UNPOSTED', @Names OUTPUT;
        IF @Names IS NOT NULL
        BEGIN
            SET @Text = 'Book ' + @Book + ' cannot be closed for period ' + @Period + '. Batches that are not posted: ' + @Names + '.';
            THROW 50012, @Text, 1;
        END;
    END;

    EXEC dbo.Private_NameBatches @Book, @Period, 'UNBALANCED', @Names OUTPUT;
    IF @Names IS NOT NULL
    BEGIN
        SET @Text = 'Book ' + @Book + ' cannot be closed for period ' + @Period + '. Batches that do not balance: ' + @Names + '.';
        THROW 50011, @Text, 1;
    END;
END;
