-- Purpose: Makes sure that the monthly series of printed numbers exists and draws its next count for this connection.
-- Called by: the routines that build printed numbers, before dbo.fn_NewSeriesNum.
-- Parameters:
--   @Period    yyyyMM
--   @Division  not used, empty
--   @Type      AP, CV or JV
-- Errors: 50006 for a text that is no period, 50020 for an unknown series
-- Writes: NumberSeries, NumberReserved
CREATE OR ALTER PROCEDURE dbo.sp_Init_BatchNumbers
    @Period varchar(6),
    @Division varchar(10),
    @Type varchar(4)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Year varchar(4);
    DECLARE @Month varchar(2);
    DECLARE @Number int;
    EXEC dbo.Private_CheckPeriod @Period;
    SET @Year = LEFT(@Period, 4);
    SET @Month = RIGHT(@Period, 2);
    EXEC dbo.Private_DrawNumber @Type, @Year, @Month, 1, @Number OUTPUT;
END;
