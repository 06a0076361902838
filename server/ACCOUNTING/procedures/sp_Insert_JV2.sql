-- Purpose: Keeps the printed number of a journal voucher; a batch that has one keeps it up to date.
-- Called by: the journal entry screen.
-- Parameters:
--   @Batch         batch number
--   @PrintJVBatch  printed number
--   @Division      not used, empty
--   @JVYear, @JVMonth, @JVSeries  the parts of the printed number; a count that was drawn is used up with it
-- Errors: 50001 empty number
-- Writes: JV2, NumberSeries, NumberReserved
CREATE OR ALTER PROCEDURE dbo.sp_Insert_JV2
    @Batch varchar(15),
    @PrintJVBatch varchar(30),
    @Division varchar(10),
    @JVYear varchar(4),
    @JVMonth varchar(2),
    @JVSeries varchar(10)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF ISNULL(@Batch, '') = '' THROW 50001, 'A batch needs a number.', 1;
    BEGIN TRANSACTION;
    UPDATE dbo.JV2
    SET PrintJVBatch = @PrintJVBatch, Division = @Division, JVYear = @JVYear, JVMonth = @JVMonth, JVSeries = @JVSeries
    WHERE Batch = @Batch;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.JV2 (Batch, PrintJVBatch, Division, JVYear, JVMonth, JVSeries)
        VALUES (@Batch, @PrintJVBatch, @Division, @JVYear, @JVMonth, @JVSeries);
    IF ISNULL(@JVSeries, '') <> '' AND ISNULL(@JVYear, '') <> '' AND ISNULL(@JVMonth, '') <> ''
        EXEC dbo.Private_RaiseNumber 'JV', @JVYear, @JVMonth, @JVSeries;
    COMMIT TRANSACTION;
END;
