-- Purpose: Puts the batches that a close must refuse into words.
-- Called by: Private_CloseBook, with a temporary table #Refused (Batch) of its own.
-- Parameters:
--   @Book   AP, CD, CR, AR or JV
--   @Names  up to ten batches by the number users see, with the internal number behind it where that differs, and the count of
--           the rest; NULL when there is none
CREATE OR ALTER PROCEDURE dbo.Private_NameBatches
    @Book varchar(4),
    @Names varchar(1000) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Batch varchar(20);
    DECLARE @Display varchar(30);
    DECLARE @Count int;
    DECLARE @Rest int;
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
