-- Purpose: How old the prepared figures of a range of months are, for the line that every statement carries.
-- Called by: the statement templates.
-- Parameters:
--   @Period1  yyyyMM
--   @Period2  yyyyMM, the last month; empty for one month only
-- Returns: one row: PreparedAt (the oldest preparation in the range), PreparedBy (name), StaleText (empty while the figures are those of
--   the ledger), and from the settings SignPrepared, SignChecked, SignApproved (names to sign on), CheckedPosition, ApprovedPosition; NULL
--   and empty where no month of the range is prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_Prepared
    @Period1 varchar(6),
    @Period2 varchar(6) = ''
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @At datetime;
    DECLARE @By varchar(120) = '';
    DECLARE @StaleSince datetime;
    IF ISNULL(@Period2, '') = '' SET @Period2 = @Period1;
    SELECT @StaleSince = MIN(P.StaleSince) FROM dbo.PreparedPeriod AS P WHERE P.Period BETWEEN @Period1 AND @Period2;
    SELECT TOP (1) @At = P.PreparedAt, @By = P.PreparedBy
    FROM dbo.PreparedPeriod AS P
    WHERE P.Period BETWEEN @Period1 AND @Period2
    ORDER BY P.PreparedAt, P.Period;
    SELECT @By = RTRIM(ISNULL(E.FirstName, '') + ' ' + ISNULL(E.LastName, ''))
    FROM PASSWORD.dbo.tbPasswordMain AS E
    WHERE E.EmployeeID = @By;
    SELECT
        @At AS PreparedAt, @By AS PreparedBy,
        CASE
            WHEN @StaleSince IS NULL THEN ''
            ELSE 'The ledger changed on ' + CONVERT(varchar(10), @StaleSince, 101) + ' after these figures were prepared. '
                + 'Run the financial preparation again.'
        END AS StaleText,
        ISNULL(S.PreparedBy, '') AS SignPrepared, ISNULL(S.VerifiedBy, '') AS SignChecked, ISNULL(S.ApprovedBy, '') AS SignApproved,
        ISNULL((SELECT MAX(X.ParamValue) FROM dbo.PARAMETERS AS X WHERE X.Code = 'VERIFIEDBYPOSITION'), '') AS CheckedPosition,
        ISNULL((SELECT MAX(X.ParamValue) FROM dbo.PARAMETERS AS X WHERE X.Code = 'APPROVEDBYPOSITION'), '') AS ApprovedPosition
    FROM dbo.SYS AS S;
END;
