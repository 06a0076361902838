-- Purpose: Writes the entry that closes income and expense of a year: every account and department turned to nothing, their sum to one
--   equity account.
-- Called by: Private_CarryYear, within its transaction.
-- Parameters:
--   @Last    last period of the year that closes, prepared
--   @Result  account that takes the result
-- Writes: GLBatch, Batchdet: batch YE and the closed year; an earlier one is replaced. It is no part of the months' figures: the last
--   month keeps its income and expense, and the opening balances are those of the month and of this batch together.
CREATE OR ALTER PROCEDURE dbo.Private_YearEndBatch
    @Last varchar(6),
    @Result varchar(15)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Batch varchar(15);
    DECLARE @Day datetime;
    DECLARE @Lines int;
    DECLARE @Sum money;
    DECLARE @By varchar(15);
    DECLARE @Text varchar(200);
    SET @Batch = 'YE' + dbo.fn_YearOf(@Last);
    SET @Text = 'Closing entry of ' + dbo.fn_YearOf(@Last);
    SET @Day = DATEADD(DAY, -1, DATEADD(MONTH, 1, CONVERT(datetime, @Last + '01', 112)));
    SET @By = dbo.fn_SessionUser();
    DELETE FROM dbo.Batchdet WHERE Batch = @Batch;
    DELETE FROM dbo.GLBatch WHERE Batch = @Batch;

    INSERT INTO dbo.Batchdet (Batch, SeqNo, Period, Code, Dept, BatchDate, Description, Debit, Credit, Posted)
    SELECT
        @Batch, ROW_NUMBER() OVER (ORDER BY P.Code, P.Dept), @Last, P.Code, P.Dept, @Day, @Text,
        CASE WHEN P.Ending < 0 THEN -P.Ending ELSE 0 END, CASE WHEN P.Ending > 0 THEN P.Ending ELSE 0 END, 1
    FROM dbo.PeriodBalance AS P
    INNER JOIN dbo.AcctCode AS A ON A.Code = P.Code
    WHERE P.Period = @Last AND A.Type IN ('IN', 'EX') AND P.Ending <> 0;
    SET @Lines = @@ROWCOUNT;
    SELECT @Sum = ISNULL(SUM(D.Debit) - SUM(D.Credit), 0) FROM dbo.Batchdet AS D WHERE D.Batch = @Batch;
    IF @Sum <> 0
        INSERT INTO dbo.Batchdet (Batch, SeqNo, Period, Code, Dept, BatchDate, Description, Debit, Credit, Posted)
        VALUES (
            @Batch, @Lines + 1, @Last, @Result, '', @Day, @Text, CASE WHEN @Sum < 0 THEN -@Sum ELSE 0 END,
            CASE WHEN @Sum > 0 THEN @Sum ELSE 0 END, 1
        );
    SELECT @Sum = ISNULL(SUM(D.Debit), 0) FROM dbo.Batchdet AS D WHERE D.Batch = @Batch;
    INSERT INTO dbo.GLBatch (Batch, BatchDate, BatchType, Period, Particular, Total, Encoder, Posted)
    VALUES (@Batch, @Day, 'YE', @Last, 'Income and expense of ' + SUBSTRING(@Batch, 3, 4) + ' closed to account ' + @Result, @Sum, @By, 1);
END;
