-- Purpose: Writes the opening balances of a year from the last prepared month of the year before: balance-sheet accounts as they stand,
--   income and expense as one figure on an equity account. The entry that does so is kept as a year-end batch of the ledger.
-- Called by: sp_YearEndClose, sp_PostForwardedBal, within their transaction.
-- Parameters:
--   @Year    the year that opens, four digits
--   @Result  account that takes the result of the year before
-- Errors: 50002 unknown account, 50030 last month not prepared, 50031 last month older than the ledger
-- Writes: BegBalance, whose rows of the year are replaced; GLBatch and Batchdet, whose batch YE and the closed year is replaced.
CREATE OR ALTER PROCEDURE dbo.Private_CarryYear
    @Year varchar(4),
    @Result varchar(15)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Last varchar(6);
    DECLARE @Text varchar(200);
    IF NOT EXISTS (SELECT 1 FROM dbo.AcctCode AS A WHERE A.Code = @Result AND A.Mast_Dept <> 'MAS')
    BEGIN
        SET @Text = 'Account "' + ISNULL(@Result, '') + '" cannot take the result of the year.';
        THROW 50002, @Text, 1;
    END;
    SET @Last = dbo.fn_PeriodAfter(dbo.fn_FirstPeriodOf(@Year), -1);
    EXEC dbo.Private_RefuseUnprepared @Last;
    IF EXISTS (SELECT 1 FROM dbo.PreparedPeriod AS P WHERE P.Period = @Last AND P.StaleSince IS NOT NULL)
    BEGIN
        SET @Text = 'The figures of period ' + @Last + ' are older than the ledger. Run the financial preparation again.';
        THROW 50031, @Text, 1;
    END;

    EXEC dbo.Private_YearEndBatch @Last, @Result;
    DELETE FROM dbo.BegBalance WHERE Year = @Year;
    INSERT INTO dbo.BegBalance (Year, Acct, Code, Debit, Credit)
    SELECT
        @Year, F.Code, F.Code, CASE WHEN SUM(F.Amount) > 0 THEN SUM(F.Amount) ELSE 0 END,
        CASE WHEN SUM(F.Amount) < 0 THEN -SUM(F.Amount) ELSE 0 END
    FROM (
        SELECT P.Code, P.Ending AS Amount
        FROM dbo.PeriodBalance AS P
        WHERE P.Period = @Last
        UNION ALL
        SELECT D.Code, D.Debit - D.Credit AS Amount
        FROM dbo.Batchdet AS D
        WHERE D.Batch = 'YE' + dbo.fn_YearOf(@Last)
    ) AS F
    GROUP BY F.Code
    HAVING SUM(F.Amount) <> 0;
END;
