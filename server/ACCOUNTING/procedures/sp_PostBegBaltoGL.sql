-- Purpose: Brings the beginning figures of a period into the ledger, book by book; such a book's month then counts as closed.
-- Called by: the period dialog (beginning balances to the ledger).
-- Parameters:
--   @Period  yyyyMM
-- Errors: 50006 no period, 50009 no figures, 50011 figures that do not balance over all books, 50013 a book whose month holds batches
-- Writes: GL, BookCloseLog, PreparedPeriod. Figures brought in earlier are replaced.
CREATE OR ALTER PROCEDURE dbo.sp_PostBegBaltoGL
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Text varchar(200);
    DECLARE @Book varchar(4);
    DECLARE @By varchar(15);
    EXEC dbo.Private_CheckPeriod @Period;
    IF NOT EXISTS (SELECT 1 FROM dbo.BegBalDT AS B WHERE B.Period = @Period)
    BEGIN
        SET @Text = 'There are no beginning figures for period ' + @Period + '.';
        THROW 50009, @Text, 1;
    END;
    IF (SELECT SUM(B.Debit) - SUM(B.Credit) FROM dbo.BegBalDT AS B WHERE B.Period = @Period) <> 0
    BEGIN
        SET @Text = 'The beginning figures of period ' + @Period + ' do not balance.';
        THROW 50011, @Text, 1;
    END;
    SELECT @Book = MIN(H.Book)
    FROM dbo.vwBookBatch AS H
    WHERE H.Period = @Period AND H.Cancelled = 0 AND H.Book IN (SELECT B.BatchType FROM dbo.BegBalDT AS B WHERE B.Period = @Period);
    IF @Book IS NOT NULL
    BEGIN
        SET @Text = 'Book ' + @Book + ' has batches in period ' + @Period + '; beginning figures cannot replace them.';
        THROW 50013, @Text, 1;
    END;

    SET @By = dbo.fn_SessionUser();
    BEGIN TRY
        BEGIN TRANSACTION;
        DELETE FROM dbo.GL
        WHERE Period = @Period AND BatchType IN (SELECT B.BatchType FROM dbo.BegBalDT AS B WHERE B.Period = @Period);
        INSERT INTO dbo.GL (Period, BatchType, Batch, SeqNo, Code, Dept, Description, Debit, Credit, DocType)
        SELECT
            B.Period, B.BatchType, 'BEGBAL', ROW_NUMBER() OVER (PARTITION BY B.BatchType ORDER BY B.EntryID), B.Acct, ISNULL(B.Dept, ''),
            'Beginning balance', B.Debit, B.Credit, 'BB'
        FROM dbo.BegBalDT AS B
        WHERE B.Period = @Period;
        INSERT INTO dbo.BookCloseLog (Book, Period, Action, ActionBy, Lines)
        SELECT G.BatchType, G.Period, 'CLOSE', @By, COUNT(*)
        FROM dbo.GL AS G
        WHERE G.Period = @Period AND G.Batch = 'BEGBAL'
        GROUP BY G.BatchType, G.Period;
        EXEC dbo.Private_MarkStale @Period;
        COMMIT TRANSACTION;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION;
        THROW;
    END CATCH;
END;
