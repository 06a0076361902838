-- Purpose: Notes that the ledger changed in a month, so that figures prepared for it and for later months are older than the ledger.
-- Called by: the closing, reopening and opening procedures.
-- Parameters:
--   @Period  yyyyMM
-- Writes: PreparedPeriod
CREATE OR ALTER PROCEDURE dbo.Private_MarkStale
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    UPDATE dbo.PreparedPeriod SET StaleSince = GETDATE() WHERE Period >= @Period AND StaleSince IS NULL;
END;
