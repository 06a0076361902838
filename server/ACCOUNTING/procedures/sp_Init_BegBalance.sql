-- Purpose: Clears the opening balances of a year before they are written again.
-- Called by: the beginning balance screen of a year.
-- Parameters:
--   @Year   four digits
--   @Spare  not used, empty
-- Writes: BegBalance
CREATE OR ALTER PROCEDURE dbo.sp_Init_BegBalance
    @Year varchar(4),
    @Spare varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    DELETE FROM dbo.BegBalance WHERE Year = @Year;
END;
