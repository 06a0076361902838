-- Purpose: Creates or replaces a share figure of the equity section.
-- Called by: the equity screen.
-- Parameters:
--   @Code         account
--   @Description  name
--   @Kind         AUTHORIZED, ISSUED, SUBSCRIBED, RECEIVABLE, TREASURY or RETAINED
--   @Shares       number of shares, or NULL
--   @ParValue     par value of a share, or NULL
-- Errors: 50001 empty account or name
-- Writes: EQUITY
CREATE OR ALTER PROCEDURE dbo.sp_Update_Equity
    @Code varchar(15),
    @Description varchar(100),
    @Kind varchar(10) = 'ISSUED',
    @Shares decimal(15, 2) = NULL,
    @ParValue money = NULL
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF LTRIM(ISNULL(@Code, '')) = '' OR LTRIM(ISNULL(@Description, '')) = ''
        THROW 50001, 'An equity account needs a code and a name.', 1;
    UPDATE dbo.EQUITY
    SET Description = @Description, Shares = @Shares, ParValue = @ParValue
    WHERE Code = @Code AND Kind = @Kind;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.EQUITY (Code, Description, Kind, Shares, ParValue) VALUES (@Code, @Description, @Kind, @Shares, @ParValue);
END;
