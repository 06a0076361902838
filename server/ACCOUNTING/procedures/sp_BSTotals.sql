-- Purpose: The totals of the balance sheet of a period from the prepared balances.
-- Called by: the balance sheet report.
-- Parameters:
--   @Period  yyyyMM; empty takes the period last prepared for reports
-- Returns: Type, Amount. Types: ASC, ASO (assets current and not), LIC, LIO (liabilities), EQ (equity), NI (result of the year); assets
--   are debit less credit, the others credit less debit
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_BSTotals
    @Period varchar(6) = ''
AS
BEGIN
    SET NOCOUNT ON;

    IF ISNULL(@Period, '') = '' SELECT @Period = S.rptpdEnd FROM dbo.SYS AS S;
    EXEC dbo.Private_RefuseUnprepared @Period;
    SELECT F.Type, SUM(F.Amount) AS Amount
    FROM (
        SELECT
            CASE
                WHEN A.Type IN ('AS', 'LI') THEN A.Type + CASE WHEN A.Class = 'O' THEN 'O' ELSE 'C' END
                WHEN A.Type = 'EQ' THEN 'EQ'
                ELSE 'NI'
            END AS Type,
            CASE WHEN A.Type = 'AS' THEN P.Ending ELSE -P.Ending END AS Amount
        FROM dbo.PeriodBalance AS P
        LEFT JOIN dbo.AcctCode AS A ON A.Code = P.Code
        WHERE P.Period = @Period
    ) AS F
    GROUP BY F.Type
    ORDER BY F.Type;
END;
