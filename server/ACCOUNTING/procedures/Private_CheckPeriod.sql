-- Purpose: Refuses a text that is no period.
-- Called by: the closing and preparation procedures.
-- Parameters:
--   @Period  yyyyMM
-- Errors: 50006 unless it is six digits with a month from 01 to 12
CREATE OR ALTER PROCEDURE dbo.Private_CheckPeriod
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @Text varchar(200);
    IF ISNULL(@Period, '') NOT LIKE '[12][0-9][0-9][0-9][01][0-9]' OR RIGHT(@Period, 2) NOT BETWEEN '01' AND '12'
    BEGIN
        SET @Text = 'Period "' + ISNULL(@Period, '') + '" is not valid.';
        THROW 50006, @Text, 1;
    END;
END;
