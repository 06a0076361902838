-- Purpose: The accounting year in which a period lies.
-- Called by: preparation, opening and year-end procedures.
-- Parameters:
--   @Period  yyyyMM
-- Returns: four digits; a fiscal year by FiscalYears where SYS.YearType says so and the year is kept there
CREATE OR ALTER FUNCTION dbo.fn_YearOf (@Period varchar(6))
RETURNS varchar(4)
AS
BEGIN
    DECLARE @Year varchar(4);
    IF EXISTS (SELECT 1 FROM dbo.SYS AS S WHERE UPPER(S.YearType) = 'FISCAL')
    BEGIN
        SELECT TOP (1) @Year = F.FiscalYear
        FROM dbo.FiscalYears AS F
        WHERE CONVERT(varchar(6), F.StartDate, 112) <= @Period AND CONVERT(varchar(6), F.EndDate, 112) >= @Period
        ORDER BY F.StartDate DESC;
    END;
    RETURN ISNULL(@Year, LEFT(@Period, 4));
END;
