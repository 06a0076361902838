-- Purpose: Refuses a close for batches that are not posted or do not balance.
-- Called by: Private_CloseBook, before it brings the batches in (UNPOSTED) and after (UNBALANCED), within its transaction: the ledger
--   holds the lines in the order of their batches, so adding them up there costs least.
-- Parameters:
--   @Book    AP, CD, CR, AR or JV
--   @Period  yyyyMM
--   @Fault   UNPOSTED or UNBALANCED
-- Errors: 50012 naming the unposted batches, 50011 naming the unbalanced ones
CREATE OR ALTER PROCEDURE dbo.Private_RefuseBatches
    @Book varchar(4),
    @Period varchar(6),
    @Fault varchar(10)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Names varchar(1000);
    DECLARE @Text varchar(1400);
    EXEC dbo.Private_NameBatches @Book, @Period, @Fault, @Names OUTPUT;
    IF @Names IS NULL RETURN;
    SET @Text = 'Book ' + @Book + ' cannot be closed for period ' + @Period + '. Batches that '
        + CASE WHEN @Fault = 'UNPOSTED' THEN 'are not posted: ' ELSE 'do not balance: ' END + @Names + '.';
    IF @Fault = 'UNPOSTED' THROW 50012, @Text, 1;
    THROW 50011, @Text, 1;
END;
