-- Purpose: The income of each day of a range by group of accounts.
-- Called by: the daily revenue report.
-- Parameters:
--   @Date1  first day
--   @Date2  last day
-- Returns: BatchDate, GLGroup, GroupTitle, Amount (credits less debits); by day and group. Books that are not closed yet are not in the
--   ledger and not here.
CREATE OR ALTER PROCEDURE dbo.sp_Report_DailyRevenue
    @Date1 datetime,
    @Date2 datetime
AS
BEGIN
    SET NOCOUNT ON;

    SELECT
        CONVERT(datetime, CONVERT(varchar(8), G.BatchDate, 112), 112) AS BatchDate, A.GLGroup, B.Description AS GroupTitle,
        SUM(G.Credit - G.Debit) AS Amount
    FROM dbo.GL AS G
    INNER JOIN dbo.AcctCode AS A ON A.Code = G.Code
    LEFT JOIN dbo.GLGROUP AS B ON B.GLGroup = A.GLGroup
    WHERE G.Period BETWEEN CONVERT(varchar(6), @Date1, 112) AND CONVERT(varchar(6), @Date2, 112)
      AND G.BatchDate >= @Date1 AND G.BatchDate < DATEADD(DAY, 1, @Date2) AND A.Type = 'IN' AND G.BatchType <> 'BB'
    GROUP BY CONVERT(datetime, CONVERT(varchar(8), G.BatchDate, 112), 112), A.GLGroup, B.Description
    HAVING SUM(G.Credit - G.Debit) <> 0
    ORDER BY BatchDate, A.GLGroup;
END;
