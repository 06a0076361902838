-- Purpose: Draws the next number of a series for this connection.
-- Called by: sp_Reserve_Number, sp_Init_BatchNumbers.
-- Parameters:
--   @Series   JV, AR, CR, AP, PF, CV, DM, CM, or APV for voucher numbers that begin with a prefix
--   @Year     four digits of a monthly series, the first four characters of a prefix, or empty
--   @Month    two digits of a monthly series, the further characters of a prefix, or empty
--   @AtLeast  the number is not below this one
--   @Number   the number drawn
-- Errors: 50020 for an unknown series
-- Writes: NumberSeries, NumberReserved
CREATE OR ALTER PROCEDURE dbo.Private_DrawNumber
    @Series varchar(4),
    @Year varchar(4),
    @Month varchar(2),
    @AtLeast int,
    @Number int OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Kept int;
    BEGIN TRANSACTION;
    -- Screens of the hospital menus raise the last numbers of SYS by themselves; a draw goes behind them.
    SET @Kept = ISNULL(@AtLeast, 1) - 1;
    IF @Series = 'AR' SELECT @Kept = ISNULL(S.ARBatch, 0) FROM dbo.SYS AS S;
    IF @Series = 'CR' SELECT @Kept = ISNULL(S.CRBBatch, 0) FROM dbo.SYS AS S;
    SET @Number = NULL;
    WHILE @Number IS NULL
    BEGIN
        UPDATE dbo.NumberSeries
        SET @Number = LastNo = CASE WHEN LastNo < @Kept THEN @Kept ELSE LastNo END + 1
        WHERE Series = @Series AND Year = @Year AND Month = @Month;
        -- Only the first draw of a series has to make it.
        IF @Number IS NULL EXEC dbo.Private_EnsureSeries @Series, @Year, @Month;
    END;
    IF @Series = 'AR' UPDATE dbo.SYS SET ARBatch = @Number WHERE ISNULL(ARBatch, 0) < @Number;
    IF @Series = 'CR' UPDATE dbo.SYS SET CRBBatch = @Number WHERE ISNULL(CRBBatch, 0) < @Number;

    UPDATE dbo.NumberReserved
    SET Number = @Number, ReservedAt = GETDATE()
    WHERE SessionID = @@SPID AND Series = @Series AND Year = @Year AND Month = @Month;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.NumberReserved (SessionID, Series, Year, Month, Number, ReservedAt)
        VALUES (@@SPID, @Series, @Year, @Month, @Number, GETDATE());
    COMMIT TRANSACTION;
END;
