-- Purpose: Adds a row to the audit log, chained to the one before.
-- Called by: the saves of documents.
-- Parameters:
--   @UserID     employee code
--   @Book       book or kind of document
--   @Reference  document number
--   @Extra      a further field, such as the account
--   @LogText    what was done
-- Writes: AuditLog, AuditHead
CREATE OR ALTER PROCEDURE dbo.sp_SaveAuditLog
    @UserID varchar(15),
    @Book varchar(20),
    @Reference varchar(60),
    @Extra varchar(200),
    @LogText varchar(500)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @LogID int;
    DECLARE @PrevHash varchar(64);
    DECLARE @Hash varchar(64);
    DECLARE @Now datetime;
    BEGIN TRANSACTION;
    -- The update of the head row lets one writer through at a time, so the chain has one order.
    UPDATE dbo.AuditHead SET @LogID = LastID = LastID + 1 WHERE OneRow = 1;
    IF @LogID IS NULL
    BEGIN
        SET @LogID = 1;
        INSERT INTO dbo.AuditHead (OneRow, LastID, LastHash) VALUES (1, 1, '');
    END;
    SELECT @PrevHash = H.LastHash FROM dbo.AuditHead AS H WHERE H.OneRow = 1;
    SET @Now = GETDATE();
    SET @UserID = ISNULL(@UserID, '');
    SET @Book = ISNULL(@Book, '');
    SET @Reference = ISNULL(@Reference, '');
    SET @Extra = ISNULL(@Extra, '');
    SET @LogText = ISNULL(@LogText, '');
    SET @Hash = dbo.fn_AuditHash(@PrevHash, @LogID, @Now, @UserID, @Book, @Reference, @Extra, @LogText);
    INSERT INTO dbo.AuditLog (LogID, LogDate, UserID, Book, Reference, Extra, LogText, PrevHash, Hash)
    VALUES (@LogID, @Now, @UserID, @Book, @Reference, @Extra, @LogText, @PrevHash, @Hash);
    UPDATE dbo.AuditHead SET LastHash = @Hash WHERE OneRow = 1;
    COMMIT TRANSACTION;
END;
