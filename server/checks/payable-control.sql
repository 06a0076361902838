-- Title: The AP control account equals the open vouchers
-- Explanation: Over all books, the balance of the trade payable account must be what the vouchers on that account still owe: their amount
--   less what payments and journal lines took off. A difference comes from a line on the control account that names no voucher.
SELECT S.APAcct AS Account, F.ControlBalance, F.OpenVouchers, F.ControlBalance - F.OpenVouchers AS Difference
FROM dbo.SYS AS S
CROSS JOIN (
    SELECT
        ISNULL((SELECT SUM(L.Credit) - SUM(L.Debit) FROM dbo.vwBookLine AS L WHERE L.Code = (SELECT Y.APAcct FROM dbo.SYS AS Y)), 0)
            AS ControlBalance,
        ISNULL((
            SELECT SUM(V.Amount)
            FROM dbo.AP AS V
            WHERE V.Cancelled = 0 AND V.Acct = (SELECT Y.APAcct FROM dbo.SYS AS Y)
                AND EXISTS (SELECT 1 FROM dbo.APDT AS D WHERE D.Voucher = V.Voucher)
        ), 0) - ISNULL((
            SELECT SUM(P.Amt_Paid)
            FROM dbo.APCDB AS P
            INNER JOIN dbo.vwBookBatch AS B ON B.Book = P.BookCode AND B.Batch = P.CVNo AND B.Cancelled = 0
            WHERE P.Acct = (SELECT Y.APAcct FROM dbo.SYS AS Y)
        ), 0) AS OpenVouchers
) AS F
WHERE F.ControlBalance <> F.OpenVouchers;
