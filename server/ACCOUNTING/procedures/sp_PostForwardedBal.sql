-- Purpose: Carries balances forward into a year: its opening balances go into the ledger.
-- Called by: the year dialog (post forwarded balances).
-- Parameters:
--   @Year  four digits, the year that opens
-- Errors: 50001 no year, 50011 opening balances that do not balance, and where the year has none yet those of Private_CarryYear
-- Writes: GL, BookCloseLog, PreparedPeriod, BegBalance. A year without opening balances takes the closing balances of the year before,
--   with its result on the income account of the settings until the year-end closing moves it.
CREATE OR ALTER PROCEDURE dbo.sp_PostForwardedBal
    @Year varchar(4)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Result varchar(15);
    DECLARE @Text varchar(200);
    IF ISNULL(@Year, '') NOT LIKE '[12][0-9][0-9][0-9]'
    BEGIN
        SET @Text = 'Year "' + ISNULL(@Year, '') + '" is not valid.';
        THROW 50001, @Text, 1;
    END;
    BEGIN TRY
        BEGIN TRANSACTION;
        IF NOT EXISTS (SELECT 1 FROM dbo.BegBalance AS B WHERE B.Year = @Year)
        BEGIN
            SELECT @Result = S.ProfitLoss FROM dbo.SYS AS S;
            EXEC dbo.Private_CarryYear @Year, @Result;
        END;
        EXEC dbo.Private_PostOpening @Year;
        COMMIT TRANSACTION;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION;
        THROW;
    END CATCH;
END;
