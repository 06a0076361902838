-- Purpose: The period a number of months after another.
-- Called by: preparation, opening and year-end procedures.
-- Parameters:
--   @Period  yyyyMM, a month that exists
--   @Months  months to add, negative to go back
-- Returns: yyyyMM
CREATE OR ALTER FUNCTION dbo.fn_PeriodAfter (@Period varchar(6), @Months int)
RETURNS varchar(6)
AS
BEGIN
    RETURN CONVERT(varchar(6), DATEADD(MONTH, @Months, CONVERT(datetime, @Period + '01', 112)), 112);
END;
