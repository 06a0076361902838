-- Purpose: The debit memo number of this connection; sp_Reserve_Number 'DM' draws it just before.
-- Called by: the debit memo screen.
-- Returns: "DM" and six digits
CREATE OR ALTER FUNCTION dbo.fn_NewDMNum ()
RETURNS varchar(20)
AS
BEGIN
    RETURN 'DM' + dbo.Private_Padded(dbo.Private_NumberFor('DM', '', ''), 6);
END;
