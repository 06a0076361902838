-- Purpose: The hash of one audit row over the hash before it and its own values.
-- Called by: sp_SaveAuditLog, the check of the chain.
-- Parameters:
--   @PrevHash   hash of the row before, empty for the first
--   @LogID      the row's number
--   @LogDate    the row's time, to the millisecond
--   @UserID, @Book, @Reference, @Extra, @LogText  the row's values
-- Returns: SHA-256 in 64 hexadecimal digits
CREATE OR ALTER FUNCTION dbo.fn_AuditHash (
    @PrevHash varchar(64), @LogID int, @LogDate datetime, @UserID varchar(15), @Book varchar(20), @Reference varchar(60),
    @Extra varchar(200), @LogText varchar(500)
)
RETURNS varchar(64)
AS
BEGIN
    DECLARE @Text varchar(1200);
    SET @Text = @PrevHash + '|' + CAST(@LogID AS varchar(12)) + '|' + CONVERT(varchar(23), @LogDate, 121) + '|' + @UserID + '|'
        + @Book + '|' + @Reference + '|' + @Extra + '|' + @LogText;
    RETURN CONVERT(varchar(64), HASHBYTES('SHA2_256', @Text), 2);
END;
