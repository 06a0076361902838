-- Purpose: The journal voucher number of this connection; sp_Reserve_Number 'JV' draws it just before.
-- Called by: the journal entry screen, uploads.
-- Returns: the batch number, from 1
CREATE OR ALTER FUNCTION dbo.fn_NewJVNum ()
RETURNS int
AS
BEGIN
    RETURN dbo.Private_NumberFor('JV', '', '');
END;
