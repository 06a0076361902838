-- Purpose: How far each book is in each month: batches, what is unposted or unbalanced, closed or reopened.
-- Called by: the close cockpit.
-- Parameters:
--   @First  yyyyMM, the first month
--   @Last   yyyyMM, the last month, at most 36 months on
-- Returns: Book, Period, Batches, Unposted, Unbalanced (counted in open months only), Closed, LastAction (CLOSE, REOPEN or empty), LastAt,
--   LastBy, LastReason; one row for each of the five books and each month, by book and month
-- Errors: 50006 no period, 50001 more than 36 months
CREATE OR ALTER PROCEDURE dbo.sp_Load_CloseCockpit
    @First varchar(6),
    @Last varchar(6)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @At varchar(6);
    EXEC dbo.Private_CheckPeriod @First;
    EXEC dbo.Private_CheckPeriod @Last;
    IF @Last > dbo.fn_PeriodAfter(@First, 35) THROW 50001, 'The cockpit shows at most 36 months.', 1;

    CREATE TABLE #Cell (
        Book varchar(4) NOT NULL, Period varchar(6) NOT NULL, Closed bit NOT NULL, LastID int NOT NULL, PRIMARY KEY (Book, Period)
    );
    SET @At = @First;
    WHILE @At <= @Last
    BEGIN
        INSERT INTO #Cell (Book, Period, Closed, LastID)
        SELECT
            B.Book, @At,
            CASE WHEN EXISTS (SELECT 1 FROM dbo.GL AS G WHERE G.Period = @At AND G.BatchType = B.Book) THEN 1 ELSE 0 END,
            ISNULL((
                SELECT MAX(L.LogID)
                FROM dbo.BookCloseLog AS L
                WHERE L.Book = B.Book AND L.Period = @At AND L.Action IN ('CLOSE', 'REOPEN')
            ), 0)
        FROM (
            SELECT 'AP' AS Book UNION ALL SELECT 'CD' AS Book UNION ALL SELECT 'CR' AS Book UNION ALL SELECT 'AR' AS Book
            UNION ALL SELECT 'JV' AS Book
        ) AS B;
        SET @At = dbo.fn_PeriodAfter(@At, 1);
    END;

    SELECT
        C.Book, C.Period, ISNULL(H.Batches, 0) AS Batches, ISNULL(H.Unposted, 0) AS Unposted, ISNULL(U.Unbalanced, 0) AS Unbalanced,
        C.Closed, ISNULL(L.Action, '') AS LastAction, L.ActionAt AS LastAt, ISNULL(L.ActionBy, '') AS LastBy,
        ISNULL(L.Reason, '') AS LastReason
    FROM #Cell AS C
    LEFT JOIN dbo.BookCloseLog AS L ON L.LogID = C.LastID
    LEFT JOIN (
        SELECT B.Book, B.Period, COUNT(*) AS Batches, SUM(CASE WHEN B.Posted = 0 THEN 1 ELSE 0 END) AS Unposted
        FROM dbo.vwBookBatch AS B
        WHERE B.Cancelled = 0 AND B.Period BETWEEN @First AND @Last
        GROUP BY B.Book, B.Period
    ) AS H ON H.Book = C.Book AND H.Period = C.Period
    LEFT JOIN (
        SELECT S.Book, S.Period, COUNT(*) AS Unbalanced
        FROM (
            SELECT D.Book, D.Period, D.Batch
            FROM dbo.vwBookLine AS D
            WHERE D.Period BETWEEN @First AND @Last AND D.Period IN (SELECT O.Period FROM #Cell AS O WHERE O.Closed = 0)
            GROUP BY D.Book, D.Period, D.Batch
            HAVING SUM(D.Debit) <> SUM(D.Credit)
        ) AS S
        GROUP BY S.Book, S.Period
    ) AS U ON U.Book = C.Book AND U.Period = C.Period AND C.Closed = 0
    ORDER BY C.Book, C.Period;
END;
