-- Purpose: The payments of a range of days: every line of the ledger that takes money off a cash account.
-- Called by: the cash payments report.
-- Parameters:
--   @Date1  first day
--   @Date2  last day
-- Returns: Code, Title (of the cash account), BatchDate, BatchType, Batch, Payee and Description (of a check voucher; else the line's
--   text), Amount; by account,
--   day and voucher. Books that are not closed yet are not in the ledger and not here.
CREATE OR ALTER PROCEDURE dbo.sp_Report_CashPayments
    @Date1 datetime,
    @Date2 datetime
AS
BEGIN
    SET NOCOUNT ON;

    SELECT
        G.Code, K.Title, G.BatchDate, G.BatchType, G.Batch, ISNULL(H.Payee, '') AS Payee,
        ISNULL(NULLIF(H.Particular, ''), ISNULL(G.Description, '')) AS Description, G.Credit AS Amount
    FROM dbo.GL AS G
    INNER JOIN dbo.vwCashAccount AS K ON K.Code = G.Code
    LEFT JOIN dbo.CDB AS H ON G.BatchType = 'CD' AND H.CVNo = G.Batch
    WHERE G.Period BETWEEN CONVERT(varchar(6), @Date1, 112) AND CONVERT(varchar(6), @Date2, 112)
      AND G.BatchDate >= @Date1 AND G.BatchDate < DATEADD(DAY, 1, @Date2) AND G.Credit <> 0 AND G.BatchType <> 'BB'
    ORDER BY G.Code, G.BatchDate, G.BatchType, G.Batch, G.SeqNo;
END;
