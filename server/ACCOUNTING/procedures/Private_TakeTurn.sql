-- Purpose: Lets one workstation at a time close or reopen a book, and tells the one that wanted the same close.
-- Called by: Private_CloseBook, sp_UnpostBook, first in their transaction.
-- Parameters:
--   @Book    AP, CD, CR, AR or JV
--   @Period  yyyyMM
--   @Action  CLOSE or REOPEN
-- Errors: 50014 when another connection closed the same month within the last seconds, which is who this one waited for
-- Writes: BookTurn
CREATE OR ALTER PROCEDURE dbo.Private_TakeTurn
    @Book varchar(4),
    @Period varchar(6),
    @Action varchar(10)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @LastAction varchar(10);
    DECLARE @LastSession int;
    DECLARE @LastAt datetime;
    DECLARE @Text varchar(200);
    UPDATE dbo.BookTurn SET Turn = Turn + 1 WHERE Book = @Book;
    IF @Action <> 'CLOSE' RETURN;
    SELECT TOP (1) @LastAction = L.Action, @LastSession = L.SessionID, @LastAt = L.ActionAt
    FROM dbo.BookCloseLog AS L
    WHERE L.Book = @Book AND L.Period = @Period
    ORDER BY L.LogID DESC;
    IF @LastAction = 'CLOSE' AND @LastSession <> @@SPID AND @LastAt > DATEADD(SECOND, -5, GETDATE())
    BEGIN
        SET @Text = 'Book ' + @Book + ' was closed for period ' + @Period + ' at another workstation a moment ago.';
        THROW 50014, @Text, 1;
    END;
END;
