-- Purpose: The rights of a user.
-- Called by: sign-in, user settings.
-- Parameters:
--   @UserID  employee code
-- Returns: AccessID, CanAccess (1 or 0), in the order of the list of rights
CREATE OR ALTER PROCEDURE dbo.sp_Load_UserAccess
    @UserID varchar(15)
AS
BEGIN
    SET NOCOUNT ON;
    SELECT A.AccessID, A.CanAccess
    FROM dbo.ACCESS AS A
    LEFT JOIN dbo.ACCESSTYPES AS T ON T.AccessID = A.AccessID
    WHERE A.UserID = @UserID
    ORDER BY T.Sequence, A.AccessID;
END;
