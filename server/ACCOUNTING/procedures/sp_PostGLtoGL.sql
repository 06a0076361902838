-- Purpose: Closes a month of the AR, CR or JV book: its uncancelled batches go into the ledger, all or nothing.
-- Called by: the period dialog (close of a book). Year-end batches belong to the JV book and go with it.
-- Parameters:
--   @Period    yyyyMM
--   @BookCode  AR, CR or JV
-- Errors: 50005 another book, 50006 no period, 50011 unbalanced batches by name, 50012 unposted batches by name,
--   50014 another workstation just closed it
-- Writes: GL, BookCloseLog, PreparedPeriod, BookTurn
CREATE OR ALTER PROCEDURE dbo.sp_PostGLtoGL
    @Period varchar(6),
    @BookCode varchar(4)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Text varchar(200);
    IF ISNULL(@BookCode, '') NOT IN ('AR', 'CR', 'JV')
    BEGIN
        SET @Text = 'Book "' + ISNULL(@BookCode, '') + '" is not closed this way.';
        THROW 50005, @Text, 1;
    END;
    EXEC dbo.Private_CloseBook @BookCode, @Period;
END;
