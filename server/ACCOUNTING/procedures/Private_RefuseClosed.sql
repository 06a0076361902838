-- Purpose: Refuses work in a month that the ledger already holds for the book.
-- Called by: the procedures that write batches, the guards of the books' tables.
-- Parameters:
--   @Book    AP, CD, CR, AR or JV
--   @Period  yyyyMM
-- Errors: 50010 naming the book and the period
CREATE OR ALTER PROCEDURE dbo.Private_RefuseClosed
    @Book varchar(4),
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @Text varchar(200);
    IF EXISTS (SELECT 1 FROM dbo.GL AS G WHERE G.Period = @Period AND G.BatchType = @Book)
    BEGIN
        SET @Text = 'Book ' + @Book + ' is closed for period ' + @Period + '.';
        THROW 50010, @Text, 1;
    END;
END;
