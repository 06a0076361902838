-- Purpose: Ties an account to a vendor.
-- Called by: the account editor.
-- Parameters:
--   @Code      account code
--   @VendorID  vendor, or empty for none
-- Writes: AcctCode
CREATE OR ALTER PROCEDURE dbo.sp_Update_AcctVend
    @Code varchar(15),
    @VendorID varchar(15)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    UPDATE dbo.AcctCode SET VendorID = NULLIF(@VendorID, '') WHERE Code = @Code;
END;
