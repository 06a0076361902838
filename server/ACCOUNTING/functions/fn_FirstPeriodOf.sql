-- Purpose: The first period of an accounting year.
-- Called by: preparation, opening and year-end procedures.
-- Parameters:
--   @Year  four digits
-- Returns: yyyyMM; January, or the month in which the fiscal year begins
CREATE OR ALTER FUNCTION dbo.fn_FirstPeriodOf (@Year varchar(4))
RETURNS varchar(6)
AS
BEGIN
    DECLARE @Period varchar(6);
    IF EXISTS (SELECT 1 FROM dbo.SYS AS S WHERE UPPER(S.YearType) = 'FISCAL')
    BEGIN
        SELECT @Period = CONVERT(varchar(6), F.StartDate, 112) FROM dbo.FiscalYears AS F WHERE F.FiscalYear = @Year;
    END;
    RETURN ISNULL(@Period, @Year + '01');
END;
