-- Purpose: The number of a check voucher that users see.
-- Called by: check voucher lists.
-- Parameters:
--   @CVNo  internal check voucher number
-- Returns: the printed number, or the internal one where none was drawn
CREATE OR ALTER FUNCTION dbo.fn_GetDisplayCVNo (@CVNo varchar(20))
RETURNS varchar(30)
AS
BEGIN
    DECLARE @Display varchar(30);
    SELECT @Display = NULLIF(A.PrintCVNo, '') FROM dbo.CDB2 AS A WHERE A.CVNo = @CVNo;
    RETURN ISNULL(@Display, @CVNo);
END;
