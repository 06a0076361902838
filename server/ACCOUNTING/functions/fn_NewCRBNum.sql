-- Purpose: The cash receipts batch number of this connection; sp_Reserve_Number 'CR' draws it just before.
-- Called by: the journal entry screen, uploads.
-- Returns: the batch number, from 1
CREATE OR ALTER FUNCTION dbo.fn_NewCRBNum ()
RETURNS int
AS
BEGIN
    RETURN dbo.Private_NumberFor('CR', '', '');
END;
