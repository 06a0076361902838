-- Purpose: Makes sure that a number series has its row, beginning behind the documents that exist.
-- Called by: Private_DrawNumber, Private_RaiseNumber.
-- Parameters:
--   @Series  JV, AR, CR, AP, PF, CV or DM
--   @Year    four digits of a monthly series, or empty
--   @Month   two digits of a monthly series, or empty
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
    IF @Series NOT IN ('JV', 'AR', 'CR', 'AP', 'PF', 'CV', 'DM') OR (@Month <> '' AND @Series NOT IN ('JV', 'AP', 'CV'))
    BEGIN
        SET @Text = 'There is no number series "' + @Series + '".';
        THROW 50020, @Text, 1;
    END;

    SET @Last = 0;
    IF @Month = '' AND @Series = 'JV'
        SELECT @Last = MAX(CAST(J.Batch AS int)) FROM dbo.JV AS J WHERE J.Batch NOT LIKE '%[^0-9]%' AND LEN(J.Batch) < 10;
    IF @Month = '' AND @Series = 'AR'
        SELECT @Last = MAX(CAST(A.Batch AS int)) FROM dbo.AR AS A WHERE A.Batch NOT LIKE '%[^0-9]%' AND LEN(A.Batch) < 10;
    IF @Month = '' AND @Series = 'CR'
        SELECT @Last = MAX(CAST(C.Batch AS int)) FROM dbo.CRB AS C WHERE C.Batch NOT LIKE '%[^0-9]%' AND LEN(C.Batch) < 10;
    IF @Month = '' AND @Series = 'AP'
        SELECT @Last = MAX(CAST(P.Voucher AS int)) FROM dbo.AP AS P WHERE P.Voucher NOT LIKE '%[^0-9]%' AND LEN(P.Voucher) < 10;
    IF @Month = '' AND @Series = 'CV'
        SELECT @Last = MAX(CAST(D.CVNo AS int)) FROM dbo.CDB AS D WHERE D.CVNo NOT LIKE '%[^0-9]%' AND LEN(D.CVNo) < 10;
    IF @Month <> '' AND @Series = 'JV'
        SELECT @Last = MAX(CAST(J.JVSeries AS int))
        FROM dbo.JV2 AS J
        WHERE J.JVYear = @Year AND J.JVMonth = @Month AND J.JVSeries NOT LIKE '%[^0-9]%' AND LEN(J.JVSeries) BETWEEN 1 AND 9;

    INSERT INTO dbo.NumberSeries (Series, Year, Month, LastNo)
    SELECT @Series, @Year, @Month, ISNULL(@Last, 0)
    WHERE NOT EXISTS (
        SELECT 1
        FROM dbo.NumberSeries AS N WITH (UPDLOCK, HOLDLOCK)
        WHERE N.Series = @Series AND N.Year = @Year AND N.Month = @Month
    );
END;
