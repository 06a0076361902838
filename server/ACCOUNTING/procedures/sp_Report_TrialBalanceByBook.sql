-- Purpose: The trial balance of a month as the books made it: the balance before, and the net movement by book.
-- Called by: the trial balance per book.
-- Parameters:
--   @Period  yyyyMM
-- Returns: Code, Title, ColNo (order of the columns), ColTitle, Amount (debit less credit); by account and column. The amounts of an
--   account
--   add up to its ending balance.
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_TrialBalanceByBook
    @Period varchar(6)
AS
BEGIN
    SET NOCOUNT ON;

    EXEC dbo.Private_RefuseUnprepared @Period;
    SELECT F.Code, ISNULL(A.Description, '(not in the chart)') AS Title, F.ColNo, F.ColTitle, SUM(F.Amount) AS Amount
    FROM (
        SELECT P.Code, 0 AS ColNo, 'BEGINNING' AS ColTitle, P.Beginning AS Amount
        FROM dbo.PeriodBalance AS P
        WHERE P.Period = @Period
        UNION ALL
        SELECT
            G.Code,
            CASE G.BatchType WHEN 'AR' THEN 1 WHEN 'CR' THEN 2 WHEN 'AP' THEN 3 WHEN 'CD' THEN 4 ELSE 5 END AS ColNo,
            CASE G.BatchType
                WHEN 'AR' THEN 'RECEIVABLES' WHEN 'CR' THEN 'CASH RECEIPTS' WHEN 'AP' THEN 'PAYABLES' WHEN 'CD' THEN 'DISBURSEMENTS'
                ELSE 'JOURNAL'
            END AS ColTitle,
            G.Debit - G.Credit AS Amount
        FROM dbo.GL AS G
        WHERE G.Period = @Period AND G.BatchType <> 'BB' AND G.Code <> ''
    ) AS F
    LEFT JOIN dbo.AcctCode AS A ON A.Code = F.Code
    GROUP BY F.Code, A.Description, F.ColNo, F.ColTitle
    HAVING SUM(F.Amount) <> 0
    ORDER BY F.Code, F.ColNo;
END;
