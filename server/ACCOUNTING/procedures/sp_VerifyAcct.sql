-- Purpose: Tells whether an account is used and so must stay.
-- Called by: the account editor before a delete.
-- Parameters:
--   @Code  account code
-- Returns: Code; no row when nothing uses it
CREATE OR ALTER PROCEDURE dbo.sp_VerifyAcct
    @Code varchar(15)
AS
BEGIN
    SET NOCOUNT ON;
    IF dbo.Private_AcctUsed(@Code) = 1
        SELECT @Code AS Code;
    ELSE
        SELECT A.Code FROM dbo.AcctCode AS A WHERE 1 = 0;
END;
