-- Purpose: The equity section of the balance sheet with its share figures, as one row.
-- Called by: the detailed balance sheet report.
-- Parameters:
--   @Period  yyyyMM behind an optional first digit: 3 (this year) or 4 (the same month of last year)
-- Returns: IssuedAmount, SubscribedAmount, ReceivableAmount, TreasuryAmount, RetainedAmount, CapitalStock (credit balances of the
--   accounts kept in EQUITY), Authorized, Issued, Subscribed, Treasury (shares)
-- Errors: 50006 no period
CREATE OR ALTER PROCEDURE dbo.sp_BS_OSQEL
    @Period varchar(7)
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Month varchar(6);
    SET @Month = RIGHT(@Period, 6);
    EXEC dbo.Private_CheckPeriod @Month;
    IF LEN(@Period) = 7 AND LEFT(@Period, 1) = '4' SET @Month = dbo.fn_PeriodAfter(@Month, -12);
    SELECT
        ISNULL(SUM(CASE WHEN F.Kind = 'ISSUED' THEN F.Amount END), 0) AS IssuedAmount,
        ISNULL(SUM(CASE WHEN F.Kind = 'SUBSCRIBED' THEN F.Amount END), 0) AS SubscribedAmount,
        ISNULL(SUM(CASE WHEN F.Kind = 'RECEIVABLE' THEN F.Amount END), 0) AS ReceivableAmount,
        ISNULL(SUM(CASE WHEN F.Kind = 'TREASURY' THEN F.Amount END), 0) AS TreasuryAmount,
        ISNULL(SUM(CASE WHEN F.Kind = 'RETAINED' THEN F.Amount END), 0) AS RetainedAmount,
        ISNULL(SUM(CASE WHEN F.Kind IN ('ISSUED', 'SUBSCRIBED') THEN F.Amount END), 0) AS CapitalStock,
        ISNULL(SUM(CASE WHEN F.Kind = 'AUTHORIZED' THEN F.Shares END), 0) AS Authorized,
        ISNULL(SUM(CASE WHEN F.Kind = 'ISSUED' THEN F.Shares END), 0) AS Issued,
        ISNULL(SUM(CASE WHEN F.Kind = 'SUBSCRIBED' THEN F.Shares END), 0) AS Subscribed,
        ISNULL(SUM(CASE WHEN F.Kind = 'TREASURY' THEN F.Shares END), 0) AS Treasury
    FROM (
        SELECT
            E.Kind, E.Shares,
            ISNULL((SELECT -SUM(P.Ending) FROM dbo.PeriodBalance AS P WHERE P.Period = @Month AND P.Code = E.Code), 0) AS Amount
        FROM dbo.EQUITY AS E
    ) AS F;
END;
