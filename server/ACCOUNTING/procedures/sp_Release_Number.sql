-- Purpose: Gives back the number that this connection drew and did not use, when nobody drew a later one.
-- Called by: entry screens left without a save.
-- Parameters:
--   @Series  as sp_Reserve_Number got it
--   @Year    the same
--   @Month   the same
-- Writes: NumberSeries, NumberReserved. Where a later number was drawn the series keeps a gap.
CREATE OR ALTER PROCEDURE dbo.sp_Release_Number
    @Series varchar(4),
    @Year varchar(4) = '',
    @Month varchar(2) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Number int;
    IF @Series = 'PF' AND dbo.Private_Flag('USESEPARATEPFSERIES') = 0 SET @Series = 'AP';
    BEGIN TRANSACTION;
    SELECT @Number = R.Number
    FROM dbo.NumberReserved AS R
    WHERE R.SessionID = @@SPID AND R.Series = @Series AND R.Year = @Year AND R.Month = @Month;
    IF @Number IS NOT NULL
    BEGIN
        UPDATE dbo.NumberSeries
        SET LastNo = @Number - 1
        WHERE Series = @Series AND Year = @Year AND Month = @Month AND LastNo = @Number;
        IF @Series = 'AR' UPDATE dbo.SYS SET ARBatch = @Number - 1 WHERE ARBatch = @Number;
        IF @Series = 'CR' UPDATE dbo.SYS SET CRBBatch = @Number - 1 WHERE CRBBatch = @Number;
        DELETE FROM dbo.NumberReserved
        WHERE SessionID = @@SPID AND Series = @Series AND Year = @Year AND Month = @Month;
    END;
    COMMIT TRANSACTION;
END;
