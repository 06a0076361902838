-- Purpose: Whether a program parameter is on for this hospital.
-- Called by: procedures that depend on a parameter.
-- Parameters:
--   @Code  key of the parameter
-- Returns: 1 when the value is "Y" in upper case, a row of the hospital's own going before the common one; else 0
CREATE OR ALTER FUNCTION dbo.Private_Flag (@Code varchar(60))
RETURNS int
AS
BEGIN
    DECLARE @Value varchar(200);
    SELECT TOP (1) @Value = P.ParamValue
    FROM dbo.PARAMETERS AS P
    WHERE P.Code = @Code AND (P.Client = '' OR P.Client = (SELECT S.Client FROM dbo.SYS AS S))
    ORDER BY P.Client DESC;
    -- The program takes a small letter for off, so letter case counts here as well.
    IF ASCII(@Value) = 89 AND LEN(@Value) = 1 RETURN 1;
    RETURN 0;
END;
