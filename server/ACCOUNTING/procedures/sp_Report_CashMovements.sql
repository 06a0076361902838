-- Purpose: What came into and went out of each cash account, month by month and book by book.
-- Called by: the receipts and disbursements and the cash reconciliation templates.
-- Parameters:
--   @Period1  yyyyMM, the first month
--   @Period2  yyyyMM, the last month; it must be prepared
-- Returns: Period, Position (of the month in the range, from 1), Kind (1 beginning, 2 receipts, 3 disbursements), KindTitle, Book,
--   BookTitle,
--   Code, Title, Amount (disbursements below zero), Receipts, Disbursements, Beginning (each above zero where it is in its usual
--   sense); by account, kind, book, month
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_CashMovements
    @Period1 varchar(6),
    @Period2 varchar(6)
AS
BEGIN
    SET NOCOUNT ON;

    EXEC dbo.Private_CheckPeriod @Period1;
    EXEC dbo.Private_RefuseUnprepared @Period2;
    SELECT
        F.Period, DATEDIFF(MONTH, CONVERT(datetime, @Period1 + '01', 112), CONVERT(datetime, F.Period + '01', 112)) + 1 AS Position,
        F.Kind, CASE F.Kind WHEN 1 THEN 'BEGINNING BALANCE' WHEN 2 THEN 'RECEIPTS' ELSE 'DISBURSEMENTS' END AS KindTitle, F.Book,
        CASE F.Book
            WHEN '' THEN 'Beginning balance' WHEN 'AR' THEN 'Accounts receivable book' WHEN 'CR' THEN 'Cash receipts book'
            WHEN 'AP' THEN 'Accounts payable book' WHEN 'CD' THEN 'Cash disbursements book' ELSE 'Journal vouchers book'
        END AS BookTitle,
        F.Code, K.Title, SUM(F.Amount) AS Amount, SUM(CASE WHEN F.Kind = 2 THEN F.Amount ELSE 0 END) AS Receipts,
        SUM(CASE WHEN F.Kind = 3 THEN -F.Amount ELSE 0 END) AS Disbursements,
        SUM(CASE WHEN F.Kind = 1 THEN F.Amount ELSE 0 END) AS Beginning
    FROM (
        SELECT P.Period, 1 AS Kind, '' AS Book, P.Code, P.Beginning AS Amount
        FROM dbo.PeriodBalance AS P
        WHERE P.Period BETWEEN @Period1 AND @Period2
        UNION ALL
        SELECT G.Period, 2 AS Kind, G.BatchType AS Book, G.Code, G.Debit AS Amount
        FROM dbo.GL AS G
        WHERE G.Period BETWEEN @Period1 AND @Period2 AND G.BatchType <> 'BB' AND G.Debit <> 0
        UNION ALL
        SELECT G.Period, 3 AS Kind, G.BatchType AS Book, G.Code, -G.Credit AS Amount
        FROM dbo.GL AS G
        WHERE G.Period BETWEEN @Period1 AND @Period2 AND G.BatchType <> 'BB' AND G.Credit <> 0
    ) AS F
    INNER JOIN dbo.vwCashAccount AS K ON K.Code = F.Code
    GROUP BY F.Period, F.Kind, F.Book, F.Code, K.Title
    HAVING SUM(F.Amount) <> 0
    ORDER BY F.Code, F.Kind, F.Book, F.Period;
END;
