-- Purpose: Brings the opening balances of a year into the ledger, as book BB in the year's first period.
-- Called by: sp_PostForwardedBal, sp_YearEndClose, within their transaction.
-- Parameters:
--   @Year  four digits
-- Errors: 50011 opening balances that do not balance
-- Writes: GL, BookCloseLog, PreparedPeriod; rows brought in earlier are replaced
CREATE OR ALTER PROCEDURE dbo.Private_PostOpening
    @Year varchar(4)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @First varchar(6);
    DECLARE @Lines int;
    DECLARE @By varchar(15);
    DECLARE @Text varchar(200);
    IF (SELECT SUM(B.Debit) - SUM(B.Credit) FROM dbo.BegBalance AS B WHERE B.Year = @Year) <> 0
    BEGIN
        SET @Text = 'The opening balances of ' + @Year + ' do not balance.';
        THROW 50011, @Text, 1;
    END;
    SET @First = dbo.fn_FirstPeriodOf(@Year);
    DELETE FROM dbo.GL WHERE Period = @First AND BatchType = 'BB';
    INSERT INTO dbo.GL (Period, BatchType, Batch, SeqNo, Code, Dept, Description, Debit, Credit, DocType)
    SELECT
        @First, 'BB', 'OPENING', ROW_NUMBER() OVER (ORDER BY B.Acct), B.Acct, '', 'Opening balance ' + @Year, B.Debit, B.Credit, 'BB'
    FROM dbo.BegBalance AS B
    WHERE B.Year = @Year;
    SET @Lines = @@ROWCOUNT;
    SET @By = dbo.fn_SessionUser();
    INSERT INTO dbo.BookCloseLog (Book, Period, Action, ActionBy, Lines) VALUES ('BB', @First, 'OPENING', @By, @Lines);
    EXEC dbo.Private_MarkStale @First;
END;
