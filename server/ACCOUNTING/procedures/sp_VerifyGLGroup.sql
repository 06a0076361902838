-- Purpose: Tells whether a schedule group is used and so must stay.
-- Called by: the group editor before a delete.
-- Parameters:
--   @GLGroup  group
-- Returns: Code and Description of the accounts and groups below it; no row when there is none
CREATE OR ALTER PROCEDURE dbo.sp_VerifyGLGroup
    @GLGroup varchar(10)
AS
BEGIN
    SET NOCOUNT ON;
    SELECT A.Code, A.Description
    FROM dbo.AcctCode AS A
    WHERE A.GLGroup = @GLGroup
    UNION ALL
    SELECT G.GLGroup AS Code, G.Description
    FROM dbo.GLGROUP AS G
    WHERE G.MainGroup = @GLGroup
    ORDER BY Code;
END;
