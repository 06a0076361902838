-- Purpose: The employee who works on this connection, by the user log.
-- Called by: procedures that record who closed or prepared.
-- Returns: the employee code; empty before the first log of the connection
CREATE OR ALTER FUNCTION dbo.fn_SessionUser ()
RETURNS varchar(15)
AS
BEGIN
    DECLARE @User varchar(15);
    SELECT TOP (1) @User = L.UserID FROM dbo.UserLog AS L WHERE L.SessionID = @@SPID ORDER BY L.LogID DESC;
    RETURN ISNULL(@User, '');
END;
