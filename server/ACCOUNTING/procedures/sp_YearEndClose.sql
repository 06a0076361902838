-- Purpose: Closes income and expense of a year into the retained earnings account: writes the opening balances of the next year.
-- Called by: the year dialog (year-end closing).
-- Parameters:
--   @RetainedEarning  account that takes the result
--   @NextYear         the year after the one that is closed
-- Errors: 50001 no year, 50002 unknown account, 50015 a book with batches of the year is open, 50030 last month not prepared,
--   50031 last month older than the ledger
-- Writes: BegBalance, GLBatch, Batchdet, BookCloseLog; GL as well where the next year's opening stands there already, so that both agree. The closed
--   year's own months keep their income and expense, so that its statements can be printed again.
CREATE OR ALTER PROCEDURE dbo.sp_YearEndClose
    @RetainedEarning varchar(15),
    @NextYear varchar(4)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @First varchar(6);
    DECLARE @By varchar(15);
    DECLARE @Text varchar(200);
    IF ISNULL(@NextYear, '') NOT LIKE '[12][0-9][0-9][0-9]'
    BEGIN
        SET @Text = 'Year "' + ISNULL(@NextYear, '') + '" is not valid.';
        THROW 50001, @Text, 1;
    END;
    BEGIN TRY
        BEGIN TRANSACTION;
        EXEC dbo.Private_RefuseOpenBooks @NextYear;
        EXEC dbo.Private_CarryYear @NextYear, @RetainedEarning;
        SET @First = dbo.fn_FirstPeriodOf(@NextYear);
        IF EXISTS (SELECT 1 FROM dbo.GL AS G WHERE G.Period = @First AND G.BatchType = 'BB')
            EXEC dbo.Private_PostOpening @NextYear;
        SET @By = dbo.fn_SessionUser();
        INSERT INTO dbo.BookCloseLog (Book, Period, Action, ActionBy, Reason)
        VALUES ('GL', @First, 'YEAREND', @By, 'Result to account ' + @RetainedEarning);
        COMMIT TRANSACTION;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION;
        THROW;
    END CATCH;
END;
