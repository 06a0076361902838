-- Purpose: The number of an AP voucher that users see.
-- Called by: voucher lists.
-- Parameters:
--   @Voucher  internal voucher number
-- Returns: the printed number, or the internal one where none was drawn
CREATE OR ALTER FUNCTION dbo.fn_GetDisplayVoucher (@Voucher varchar(20))
RETURNS varchar(30)
AS
BEGIN
    DECLARE @Display varchar(30);
    SELECT @Display = NULLIF(A.PrintVoucher, '') FROM dbo.AP2 AS A WHERE A.Voucher = @Voucher;
    RETURN ISNULL(@Display, @Voucher);
END;
