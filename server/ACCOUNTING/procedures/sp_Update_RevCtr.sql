-- Purpose: Creates or replaces a revenue centre.
-- Called by: the revenue centre screen.
-- Parameters:
--   @RevCtr       key
--   @Description  name
-- Errors: 50001 empty key or name
-- Writes: RevCtr
CREATE OR ALTER PROCEDURE dbo.sp_Update_RevCtr
    @RevCtr varchar(10),
    @Description varchar(100)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF LTRIM(ISNULL(@RevCtr, '')) = '' OR LTRIM(ISNULL(@Description, '')) = ''
        THROW 50001, 'A revenue centre needs a code and a name.', 1;
    UPDATE dbo.RevCtr SET Description = @Description WHERE RevCtr = @RevCtr;
    IF @@ROWCOUNT = 0 INSERT INTO dbo.RevCtr (RevCtr, Description) VALUES (@RevCtr, @Description);
END;
