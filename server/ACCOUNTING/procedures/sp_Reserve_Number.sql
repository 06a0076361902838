-- Purpose: Draws the next number of a series for this connection; the fn_New... function of the series then gives it.
-- Called by: every save that draws a number, first in its transaction or before it.
-- Parameters:
--   @Series   JV, AR, CR, AP, PF, CV, DM, CM, or APV for voucher numbers that begin with a prefix
--   @Year     four digits of a monthly series, the first four characters of a prefix, or empty
--   @Month    two digits of a monthly series, the further characters of a prefix, or empty
--   @AtLeast  the number is not below this one; for series whose numbers also come from elsewhere
-- Returns: Number
-- Errors: 50020 for an unknown series
-- Writes: NumberSeries, NumberReserved. Inside the save's transaction a rollback undoes the draw, and the screen must forget the number.
--   Committed by itself, the number stays with the connection when the save rolls back: the save may be repeated with it, or
--   sp_Release_Number gives it back. PF draws from AP where fees have no series of their own.
CREATE OR ALTER PROCEDURE dbo.sp_Reserve_Number
    @Series varchar(4),
    @Year varchar(4) = '',
    @Month varchar(2) = '',
    @AtLeast int = 1
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Number int;
    IF @Series = 'PF' AND dbo.Private_Flag('USESEPARATEPFSERIES') = 0 SET @Series = 'AP';
    EXEC dbo.Private_DrawNumber @Series, @Year, @Month, @AtLeast, @Number OUTPUT;
    SELECT @Number AS Number;
END;
