-- Purpose: The internal check voucher number of this connection; sp_Reserve_Number 'CV' draws it just before.
-- Called by: the check voucher screens.
-- Parameters:
--   @CVFormat  number format, zeros for the digits wanted ("000000")
-- Returns: the number, at least as wide as the format
CREATE OR ALTER FUNCTION dbo.fn_NewCVNum (@CVFormat varchar(30))
RETURNS varchar(20)
AS
BEGIN
    RETURN dbo.Private_Padded(dbo.Private_NumberFor('CV', '', ''), LEN(@CVFormat));
END;
