-- Purpose: Closes a month of the cash disbursement book: its uncancelled check vouchers go into the ledger, all or nothing.
-- Called by: the period dialog (close of CDB).
-- Parameters:
--   @Period  yyyyMM
-- Errors: 50006 no period, 50011 unbalanced vouchers by name, 50012 unposted vouchers by name,
--   50014 another workstation just closed it
-- Writes: GL, BookCloseLog, PreparedPeriod, BookTurn
CREATE OR ALTER PROCEDURE dbo.sp_PostCDBtoGL
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    EXEC dbo.Private_CloseBook 'CD', @Period;
END;
