-- Purpose: Refuses to close a year while a book of it is open that holds batches.
-- Called by: sp_YearEndClose, within its transaction.
-- Parameters:
--   @NextYear  the year after the one that is closed
-- Errors: 50015 naming the first such book and month and how many there are
CREATE OR ALTER PROCEDURE dbo.Private_RefuseOpenBooks
    @NextYear varchar(4)
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @After varchar(6);
    DECLARE @From varchar(6);
    DECLARE @First varchar(12);
    DECLARE @Count int;
    DECLARE @Text varchar(200);
    SET @After = dbo.fn_FirstPeriodOf(@NextYear);
    SET @From = dbo.fn_FirstPeriodOf(dbo.fn_YearOf(dbo.fn_PeriodAfter(@After, -1)));
    SELECT @First = MIN(P.Period + ' ' + P.Book), @Count = COUNT(*)
    FROM dbo.vwBookPeriod AS P
    WHERE P.Period >= @From AND P.Period < @After AND P.Closed = 0 AND P.Batches > 0;
    IF @Count = 0 RETURN;
    SET @Text = 'Book ' + SUBSTRING(@First, 8, 4) + ' is not closed for period ' + LEFT(@First, 6)
        + CASE WHEN @Count > 1 THEN ' (and ' + CONVERT(varchar(10), @Count - 1) + ' more)' ELSE '' END
        + '. Close every month of the year first.';
    THROW 50015, @Text, 1;
END;
