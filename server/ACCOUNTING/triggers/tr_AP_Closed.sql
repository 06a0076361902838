-- Purpose: Refuses what would change the figures of a closed month of book AP: new and removed vouchers, and their amount, account,
--   period, date or cancelling. Payments, approval and adjustment go on.
-- Guards: AP
-- Errors: 50010 naming the book and the period
CREATE OR ALTER TRIGGER dbo.tr_AP_Closed
ON dbo.AP
AFTER INSERT, UPDATE, DELETE
AS
BEGIN
    IF @@ROWCOUNT = 0 RETURN;
    SET NOCOUNT ON;

    DECLARE @Period varchar(6);
    SELECT @Period = MIN(G.Period)
    FROM dbo.GL AS G
    WHERE G.BatchType = 'AP' AND G.Period IN (
        SELECT I.Period
        FROM inserted AS I
        LEFT JOIN deleted AS D ON D.Voucher = I.Voucher
        WHERE D.Voucher IS NULL OR D.Period <> I.Period OR D.Amount <> I.Amount OR D.Cancelled <> I.Cancelled
            OR D.VoucherDate <> I.VoucherDate OR ISNULL(D.Acct, '') <> ISNULL(I.Acct, '')
        UNION
        SELECT D.Period
        FROM deleted AS D
        LEFT JOIN inserted AS I ON I.Voucher = D.Voucher
        WHERE I.Voucher IS NULL OR I.Period <> D.Period
    );
    IF @Period IS NOT NULL EXEC dbo.Private_RefuseClosed 'AP', @Period;
END;
