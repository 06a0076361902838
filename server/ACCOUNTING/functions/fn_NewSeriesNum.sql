-- Purpose: The count of this connection in a monthly series of printed numbers; sp_Init_BatchNumbers draws it just before.
-- Called by: the routines that build printed numbers.
-- Parameters:
--   @Type      AP, CV or JV
--   @Division  not used, empty
--   @Year      four digits
--   @Month     two digits
-- Returns: the count, from 1
CREATE OR ALTER FUNCTION dbo.fn_NewSeriesNum (@Type varchar(4), @Division varchar(10), @Year varchar(4), @Month varchar(2))
RETURNS int
AS
BEGIN
    RETURN dbo.Private_NumberFor(@Type, @Year, @Month);
END;
