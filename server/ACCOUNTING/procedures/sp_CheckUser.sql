-- Purpose: Tells whether an employee has the accounting system.
-- Called by: user settings.
-- Parameters:
--   @UserID  employee code
-- Returns: LastName, FirstName, MiddleName; no row for an employee who is unknown or may not open system 55
CREATE OR ALTER PROCEDURE dbo.sp_CheckUser
    @UserID varchar(15)
AS
BEGIN
    SET NOCOUNT ON;
    SELECT P.LastName, P.FirstName, P.MiddleName
    FROM PASSWORD.dbo.tbPasswordMain AS P
    WHERE P.EmployeeID = @UserID AND ';' + P.DeptCode + ';' LIKE '%;55;%';
END;
