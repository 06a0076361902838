-- Purpose: Reopens a month of a book: takes its rows out of the ledger.
-- Called by: the period dialog (reopening), the close cockpit.
-- Parameters:
--   @Book    JV, CD, CR, AR or AP
--   @Period  yyyyMM
--   @Reason  why it is reopened, kept in the log
-- Errors: 50005 another book, 50006 no period
-- Writes: GL, ReopenedLine, BookCloseLog, PreparedPeriod, BookTurn. A month that is open stays as it is.
CREATE OR ALTER PROCEDURE dbo.sp_UnpostBook
    @Book varchar(4),
    @Period varchar(6),
    @Reason varchar(200) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Text varchar(200);
    DECLARE @Lines int;
    DECLARE @By varchar(15);
    IF ISNULL(@Book, '') NOT IN ('AP', 'CD', 'CR', 'AR', 'JV')
    BEGIN
        SET @Text = 'There is no book "' + ISNULL(@Book, '') + '".';
        THROW 50005, @Text, 1;
    END;
    EXEC dbo.Private_CheckPeriod @Period;
    BEGIN TRY
        BEGIN TRANSACTION;
        EXEC dbo.Private_TakeTurn @Book, @Period, 'REOPEN';
        IF EXISTS (SELECT 1 FROM dbo.GL AS G WHERE G.Period = @Period AND G.BatchType = @Book)
        BEGIN
            DELETE FROM dbo.ReopenedLine WHERE Book = @Book AND Period = @Period;
            INSERT INTO dbo.ReopenedLine (Book, Period, Batch, SeqNo, Code, Dept, Debit, Credit)
            SELECT G.BatchType, G.Period, G.Batch, G.SeqNo, G.Code, G.Dept, G.Debit, G.Credit
            FROM dbo.GL AS G
            WHERE G.Period = @Period AND G.BatchType = @Book AND G.Code <> '';
        END;
        DELETE FROM dbo.GL WHERE Period = @Period AND BatchType = @Book;
        SET @Lines = @@ROWCOUNT;
        IF @Lines > 0
        BEGIN
            SET @By = dbo.fn_SessionUser();
            INSERT INTO dbo.BookCloseLog (Book, Period, Action, ActionBy, Lines, Reason)
            VALUES (@Book, @Period, 'REOPEN', @By, @Lines, ISNULL(@Reason, ''));
            EXEC dbo.Private_MarkStale @Period;
        END;
        COMMIT TRANSACTION;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION;
        THROW;
    END CATCH;
END;
