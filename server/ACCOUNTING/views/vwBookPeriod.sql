-- Purpose: Each book and month that holds batches or ledger rows: what stands in it and whether it is closed.
-- Called by: the home view, the closing cockpit.
-- Returns: Book, Period, Batches, Unposted, Closed (1 when the ledger holds the book's month)
CREATE OR ALTER VIEW dbo.vwBookPeriod
AS
SELECT
    P.Book, P.Period, SUM(P.Batches) AS Batches, SUM(P.Unposted) AS Unposted, MAX(P.Closed) AS Closed
FROM (
    SELECT
        B.Book, B.Period, COUNT(*) AS Batches, SUM(CASE WHEN B.Posted = 0 THEN 1 ELSE 0 END) AS Unposted, 0 AS Closed
    FROM dbo.vwBookBatch AS B
    WHERE B.Cancelled = 0
    GROUP BY B.Book, B.Period
    UNION ALL
    SELECT
        G.BatchType AS Book, G.Period, 0 AS Batches, 0 AS Unposted, 1 AS Closed
    FROM dbo.GL AS G
    WHERE G.BatchType <> 'BB'
    GROUP BY G.BatchType, G.Period
) AS P
GROUP BY P.Book, P.Period;
