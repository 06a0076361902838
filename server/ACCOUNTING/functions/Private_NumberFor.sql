-- Purpose: The number of a series that belongs to this connection: the one it drew last, else the one that would be next.
-- Called by: the fn_New... functions.
-- Parameters:
--   @Series  JV, AR, CR, AP, PF, CV, DM or CM
--   @Year    four digits of a monthly series, or empty
--   @Month   two digits of a monthly series, or empty
-- Returns: the number; a next number that was not drawn may be drawn by anyone
CREATE OR ALTER FUNCTION dbo.Private_NumberFor (@Series varchar(4), @Year varchar(4), @Month varchar(2))
RETURNS int
AS
BEGIN
    RETURN COALESCE(
        (SELECT R.Number
         FROM dbo.NumberReserved AS R
         WHERE R.SessionID = @@SPID AND R.Series = @Series AND R.Year = @Year AND R.Month = @Month),
        (SELECT N.LastNo + 1
         FROM dbo.NumberSeries AS N
         WHERE N.Series = @Series AND N.Year = @Year AND N.Month = @Month),
        1);
END;
