-- Purpose: Builds the balances of one month from the month before and the ledger.
-- Called by: sp_PrepareFinance, within its transaction.
-- Parameters:
--   @Period  yyyyMM
--   @Carry   1 when the balances of the month before go on, 0 when the month opens a year with figures of its own
-- Writes: PeriodBalance, PreparedPeriod
CREATE OR ALTER PROCEDURE dbo.Private_PreparePeriod
    @Period varchar(6),
    @Carry bit
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Before varchar(6);
    DECLARE @By varchar(15);
    SET @Before = CASE WHEN @Carry = 1 THEN dbo.fn_PeriodAfter(@Period, -1) ELSE '' END;
    DELETE FROM dbo.PeriodBalance WHERE Period = @Period;
    INSERT INTO dbo.PeriodBalance (Period, Code, Dept, Beginning, Debit, Credit, Ending)
    SELECT
        @Period, F.Code, F.Dept, SUM(F.Beginning), SUM(F.Debit), SUM(F.Credit), SUM(F.Beginning) + SUM(F.Debit) - SUM(F.Credit)
    FROM (
        SELECT P.Code, P.Dept, P.Ending AS Beginning, CAST(0 AS money) AS Debit, CAST(0 AS money) AS Credit
        FROM dbo.PeriodBalance AS P
        WHERE P.Period = @Before
        UNION ALL
        SELECT G.Code, G.Dept, G.Debit - G.Credit AS Beginning, CAST(0 AS money) AS Debit, CAST(0 AS money) AS Credit
        FROM dbo.GL AS G
        WHERE G.Period = @Period AND G.BatchType = 'BB'
        UNION ALL
        SELECT G.Code, G.Dept, CAST(0 AS money) AS Beginning, SUM(G.Debit) AS Debit, SUM(G.Credit) AS Credit
        FROM dbo.GL AS G
        WHERE G.Period = @Period AND G.BatchType <> 'BB' AND G.Code <> ''
        GROUP BY G.Code, G.Dept
    ) AS F
    GROUP BY F.Code, F.Dept;

    SET @By = dbo.fn_SessionUser();
    UPDATE dbo.PreparedPeriod SET PreparedAt = GETDATE(), PreparedBy = @By, StaleSince = NULL WHERE Period = @Period;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.PreparedPeriod (Period, PreparedAt, PreparedBy, StaleSince) VALUES (@Period, GETDATE(), @By, NULL);
END;
