-- Purpose: Notes that a document with this number was saved: the series goes at least so far, and the drawn number is used up.
-- Called by: the procedures that write headers.
-- Parameters:
--   @Series  JV, AR, CR, AP, PF, CV, DM or CM
--   @Year    four digits of a monthly series, or empty
--   @Month   two digits of a monthly series, or empty
--   @Text    number of the document; a text that is no plain number changes nothing
-- Writes: NumberSeries, NumberReserved
CREATE OR ALTER PROCEDURE dbo.Private_RaiseNumber
    @Series varchar(4),
    @Year varchar(4),
    @Month varchar(2),
    @Text varchar(20)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Number int;
    IF ISNULL(@Text, '') = '' OR @Text LIKE '%[^0-9]%' OR LEN(@Text) > 9 RETURN;
    SET @Number = CAST(@Text AS int);
    DELETE FROM dbo.NumberReserved
    WHERE SessionID = @@SPID AND Series = @Series AND Year = @Year AND Month = @Month AND Number = @Number;
    -- The series of a drawn number goes so far already.
    IF @@ROWCOUNT > 0 RETURN;
    EXEC dbo.Private_EnsureSeries @Series, @Year, @Month;
    UPDATE dbo.NumberSeries
    SET LastNo = @Number
    WHERE Series = @Series AND Year = @Year AND Month = @Month AND LastNo < @Number;
END;
