-- Purpose: The trial balance of a month from the prepared balances: opening, movement and closing per account.
-- Called by: the trial balance report.
-- Parameters:
--   @Period  yyyyMM
-- Returns: Code, Description, Type, GLGroup, GLDescription, BegDebit, BegCredit, Debit, Credit, EndDebit, EndCredit, Beginning, Ending
--   (debit less credit), PreparedAt, PreparedBy (name), Stale ("Y" when the ledger changed since), StaleText; by account.
--   Accounts without any figure are left out.
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_TrialBalance
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @At datetime;
    DECLARE @By varchar(120);
    DECLARE @StaleSince datetime;
    DECLARE @StaleText varchar(200);
    EXEC dbo.Private_RefuseUnprepared @Period;
    SELECT @At = P.PreparedAt, @By = P.PreparedBy, @StaleSince = P.StaleSince FROM dbo.PreparedPeriod AS P WHERE P.Period = @Period;
    SELECT @By = RTRIM(ISNULL(E.FirstName, '') + ' ' + ISNULL(E.LastName, ''))
    FROM PASSWORD.dbo.tbPasswordMain AS E
    WHERE E.EmployeeID = @By;
    SET @StaleText = CASE
        WHEN @StaleSince IS NULL THEN ''
        ELSE 'The ledger changed on ' + CONVERT(varchar(10), @StaleSince, 101) + ' after these figures were prepared.'
    END;

    SELECT
        B.Code, ISNULL(A.Description, '(not in the chart)') AS Description, A.Type, A.GLGroup, G.Description AS GLDescription,
        CASE WHEN B.Beginning > 0 THEN B.Beginning ELSE 0 END AS BegDebit,
        CASE WHEN B.Beginning < 0 THEN -B.Beginning ELSE 0 END AS BegCredit,
        B.Debit, B.Credit,
        CASE WHEN B.Ending > 0 THEN B.Ending ELSE 0 END AS EndDebit,
        CASE WHEN B.Ending < 0 THEN -B.Ending ELSE 0 END AS EndCredit,
        B.Beginning, B.Ending, @At AS PreparedAt, @By AS PreparedBy,
        CASE WHEN @StaleSince IS NULL THEN '' ELSE 'Y' END AS Stale, @StaleText AS StaleText
    FROM (
        SELECT
            P.Code, SUM(P.Beginning) AS Beginning, SUM(P.Debit) AS Debit, SUM(P.Credit) AS Credit, SUM(P.Ending) AS Ending
        FROM dbo.PeriodBalance AS P
        WHERE P.Period = @Period
        GROUP BY P.Code
    ) AS B
    LEFT JOIN dbo.AcctCode AS A ON A.Code = B.Code
    LEFT JOIN dbo.GLGROUP AS G ON G.GLGroup = A.GLGroup
    WHERE B.Beginning <> 0 OR B.Debit <> 0 OR B.Credit <> 0 OR B.Ending <> 0
    ORDER BY B.Code;
END;
