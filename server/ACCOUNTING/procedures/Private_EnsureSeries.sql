-- Purpose: Makes sure that a number series has its row, beginning behind the documents that exist.
-- Called by: Private_DrawNumber, Private_RaiseNumber.
-- Parameters:
--   @Series  JV, AR, CR, AP, PF, CV, DM, CM, or APV for voucher numbers that begin with a prefix
--   @Year    four digits of a monthly series, the first four characters of a prefix, or empty
--   @Month   two digits of a monthly series, the further characters of a prefix, or empty
-- Errors: 50020 for an unknown series
-- Writes: NumberSeries
CREATE OR ALTER PROCEDURE dbo.Private_EnsureSeries
    @Series varchar(4),
    @Year varchar(4),
    @Month varchar(2)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Text varchar(200);
    DECLARE @Last int;
    IF EXISTS (SELECT 1 FROM dbo.NumberSeries AS N WHERE N.Series = @Series AND N.Year = @Year AND N.Month = @Month) RETURN;
    IF @Series NOT IN ('JV', 'AR', 'CR', 'AP', 'PF', 'CV', 'DM', 'CM', 'APV')
        OR (@Month <> '' AND @Series NOT IN ('JV', 'AP', 'CV', 'APV'))
    BEGIN
        SET @Text = 'There is no number series "' + @Series + '".';
        THROW 50020, @Text, 1;
    END;

    SET @Last = dbo.Private_HighestNumber(@Series, @Year, @Month);
    INSERT INTO dbo.NumberSeries (Series, Year, Month, LastNo)
    SELECT @Series, @Year, @Month, @Last
    WHERE NOT EXISTS (
        SELECT 1
        FROM dbo.NumberSeries AS N WITH (UPDLOCK, HOLDLOCK)
        WHERE N.Series = @Series AND N.Year = @Year AND N.Month = @Month
    );
END;
