-- Purpose: The AP voucher number of this connection; sp_Reserve_Number 'AP' draws it just before.
-- Called by: the voucher screens, where vouchers have one running series.
-- Returns: the number in six digits
CREATE OR ALTER FUNCTION dbo.fn_NewAPNum ()
RETURNS varchar(20)
AS
BEGIN
    RETURN dbo.Private_Padded(dbo.Private_NumberFor('AP', '', ''), 6);
END;
