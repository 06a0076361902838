-- Purpose: Notes that a printed number of a monthly series was used.
-- Called by: the check voucher screen after a save.
-- Parameters:
--   @Period    yyyyMM
--   @Division  not used, empty
--   @Type      AP, CV or JV
--   @Series    the count within the month
-- Errors: 50006 for a text that is no period
-- Writes: NumberSeries, NumberReserved
CREATE OR ALTER PROCEDURE dbo.sp_Update_BatchNumbers
    @Period varchar(6),
    @Division varchar(10),
    @Type varchar(4),
    @Series varchar(10)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Year varchar(4);
    DECLARE @Month varchar(2);
    EXEC dbo.Private_CheckPeriod @Period;
    SET @Year = LEFT(@Period, 4);
    SET @Month = RIGHT(@Period, 2);
    EXEC dbo.Private_RaiseNumber @Type, @Year, @Month, @Series;
END;
