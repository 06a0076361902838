-- Purpose: Prepares the figures of the financial reports: balances stored per period, account and department.
-- Called by: the period dialog (financial preparation).
-- Parameters:
--   @Period  yyyyMM, the period of the reports
-- Errors: 50006 no period
-- Writes: PeriodBalance, PreparedPeriod, BookCloseLog. The period itself is always built anew; months before it only where they were
--   never prepared or the ledger changed since. The chain begins with the first month of the last year that was opened with
--   forwarded balances, or with the first month of the ledger; until a year is opened so, balances run on from the year before.
CREATE OR ALTER PROCEDURE dbo.sp_PrepareFinance
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @First varchar(6);
    DECLARE @Opened varchar(6);
    DECLARE @At varchar(6);
    DECLARE @Carry bit;
    DECLARE @Count int;
    DECLARE @By varchar(15);
    EXEC dbo.Private_CheckPeriod @Period;
    BEGIN TRY
        BEGIN TRANSACTION;
        SELECT @Opened = MAX(G.Period) FROM dbo.GL AS G WHERE G.BatchType = 'BB' AND G.Period <= @Period;
        SELECT @First = MIN(G.Period) FROM dbo.GL AS G;
        SET @First = ISNULL(@Opened, @First);
        IF @First IS NULL OR @First > @Period SET @First = @Period;

        SET @At = @First;
        SET @Carry = 0;
        SET @Count = 0;
        WHILE @At <= @Period
        BEGIN
            IF @At = @Period OR NOT EXISTS (
                SELECT 1 FROM dbo.PreparedPeriod AS P WHERE P.Period = @At AND P.StaleSince IS NULL
            )
            BEGIN
                EXEC dbo.Private_PreparePeriod @At, @Carry;
                SET @Count = @Count + 1;
                -- A month built anew moves every later month that stands on it.
                IF @At < @Period
                    UPDATE dbo.PreparedPeriod SET StaleSince = GETDATE() WHERE Period > @At AND StaleSince IS NULL;
            END;
            SET @Carry = 1;
            SET @At = dbo.fn_PeriodAfter(@At, 1);
        END;

        SET @By = dbo.fn_SessionUser();
        INSERT INTO dbo.BookCloseLog (Book, Period, Action, ActionBy, Lines) VALUES ('GL', @Period, 'PREPARE', @By, @Count);
        COMMIT TRANSACTION;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION;
        THROW;
    END CATCH;
END;
