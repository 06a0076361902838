-- Purpose: Adds a row to the user log.
-- Called by: every screen.
-- Parameters:
--   @UserID      employee code
--   @SystemName  name of the system
--   @LogText     what was done
-- Writes: UserLog
CREATE OR ALTER PROCEDURE dbo.sp_SaveUserLogs
    @UserID varchar(15),
    @SystemName varchar(30),
    @LogText varchar(500)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    INSERT INTO dbo.UserLog (UserID, SystemName, LogText, SessionID)
    VALUES (@UserID, @SystemName, @LogText, @@SPID);
END;
