-- Purpose: The highest number of a series that documents carry already.
-- Called by: Private_EnsureSeries.
-- Parameters:
--   @Series  JV, AR, CR, AP, PF, CV, DM or CM
--   @Year    four digits of a monthly series, or empty
--   @Month   two digits of a monthly series, or empty
-- Returns: the number; 0 where there is none
CREATE OR ALTER FUNCTION dbo.Private_HighestNumber (@Series varchar(4), @Year varchar(4), @Month varchar(2))
RETURNS int
AS
BEGIN
    DECLARE @Last int;
    IF @Month <> ''
    BEGIN
        IF @Series = 'JV'
            SELECT @Last = MAX(TRY_CAST(J.JVSeries AS int)) FROM dbo.JV2 AS J WHERE J.JVYear = @Year AND J.JVMonth = @Month;
        IF @Series = 'AP'
            SELECT @Last = MAX(TRY_CAST(P.APSeries AS int)) FROM dbo.AP2 AS P WHERE P.APYear = @Year AND P.APMonth = @Month;
        IF @Series = 'CV'
            SELECT @Last = MAX(TRY_CAST(D.CVSeries AS int)) FROM dbo.CDB2 AS D WHERE D.CVYear = @Year AND D.CVMonth = @Month;
        RETURN ISNULL(@Last, 0);
    END;

    IF @Series = 'JV' SELECT @Last = MAX(TRY_CAST(J.Batch AS int)) FROM dbo.JV AS J WHERE J.Batch NOT LIKE '%[^0-9]%';
    IF @Series = 'AR' SELECT @Last = MAX(TRY_CAST(A.Batch AS int)) FROM dbo.AR AS A WHERE A.Batch NOT LIKE '%[^0-9]%';
    IF @Series = 'CR' SELECT @Last = MAX(TRY_CAST(C.Batch AS int)) FROM dbo.CRB AS C WHERE C.Batch NOT LIKE '%[^0-9]%';
    -- Voucher numbers of ten digits begin with their period and count for themselves.
    IF @Series = 'AP'
        SELECT @Last = MAX(TRY_CAST(P.Voucher AS int)) FROM dbo.AP AS P WHERE P.Voucher NOT LIKE '%[^0-9]%' AND LEN(P.Voucher) < 10;
    IF @Series IN ('PF', 'CM')
        SELECT @Last = MAX(TRY_CAST(SUBSTRING(P.Voucher, 3, 18) AS int)) FROM dbo.AP AS P WHERE P.Voucher LIKE @Series + '[0-9]%';
    IF @Series = 'CV' SELECT @Last = MAX(TRY_CAST(D.CVNo AS int)) FROM dbo.CDB AS D WHERE D.CVNo NOT LIKE '%[^0-9]%';
    IF @Series = 'DM'
        SELECT @Last = MAX(TRY_CAST(SUBSTRING(D.CVNo, 3, 18) AS int)) FROM dbo.CDB AS D WHERE D.CVNo LIKE 'DM[0-9]%';
    RETURN ISNULL(@Last, 0);
END;
