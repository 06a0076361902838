-- Purpose: Brings the uncancelled batches of a book's month into the ledger, all or nothing.
-- Called by: sp_PostGLtoGL, sp_PostAPtoGL, sp_PostCDBtoGL.
-- Parameters:
--   @Book    AP, CD, CR, AR or JV
--   @Period  yyyyMM
-- Errors: 50006 no period, 50011 and 50012 as Private_RefuseBatches raises them, 50014 another workstation just closed it
-- Writes: GL, BookCloseLog, PreparedPeriod, BookTurn. What an earlier close of the same book and month brought is replaced. A month without
--   lines gets one row without account and amount, since a book is closed exactly when the ledger holds a row of it.
CREATE OR ALTER PROCEDURE dbo.Private_CloseBook
    @Book varchar(4),
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Lines int;
    DECLARE @By varchar(15);
    EXEC dbo.Private_CheckPeriod @Period;
    BEGIN TRY
        BEGIN TRANSACTION;
        EXEC dbo.Private_TakeTurn @Book, @Period, 'CLOSE';
        IF dbo.Private_Flag('ENABLETRANSACTIONPOSTING') = 1 EXEC dbo.Private_RefuseBatches @Book, @Period, 'UNPOSTED';

        DELETE FROM dbo.GL WHERE Period = @Period AND BatchType = @Book;
        INSERT INTO dbo.GL (
            Period, BatchType, Batch, SeqNo, Code, Dept, BatchDate, Description, Debit, Credit, DocType, SubCode
        )
        SELECT
            L.Period, L.Book, L.Batch, L.SeqNo, L.Code, L.Dept, L.BatchDate, L.Description, L.Debit, L.Credit, L.DocType, L.SubCode
        FROM dbo.vwBookLine AS L
        WHERE L.Book = @Book AND L.Period = @Period
        ORDER BY L.Batch, L.SeqNo;
        SET @Lines = @@ROWCOUNT;
        EXEC dbo.Private_RefuseBatches @Book, @Period, 'UNBALANCED';
        IF @Lines = 0
            INSERT INTO dbo.GL (Period, BatchType, Batch, SeqNo, Code, Dept, Description, Debit, Credit, DocType)
            VALUES (@Period, @Book, '', 0, '', '', 'Closed without batches', 0, 0, @Book);

        SET @By = dbo.fn_SessionUser();
        INSERT INTO dbo.BookCloseLog (Book, Period, Action, ActionBy, Lines)
        VALUES (@Book, @Period, 'CLOSE', @By, @Lines);
        EXEC dbo.Private_MarkStale @Period;
        COMMIT TRANSACTION;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION;
        THROW;
    END CATCH;
END;
