-- Purpose: The voucher number of this connection for professional fees.
-- Called by: the professional fee screens, after sp_Reserve_Number 'PF'.
-- Returns: "PF" and six digits with the parameter UseSeparatePFSeries, else the number that fn_NewAPNum gives
CREATE OR ALTER FUNCTION dbo.fn_NextPFVoucher ()
RETURNS varchar(20)
AS
BEGIN
    IF dbo.Private_Flag('USESEPARATEPFSERIES') = 1
        RETURN 'PF' + dbo.Private_Padded(dbo.Private_NumberFor('PF', '', ''), 6);
    RETURN dbo.fn_NewAPNum();
END;
