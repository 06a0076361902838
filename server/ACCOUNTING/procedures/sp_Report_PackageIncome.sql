-- Purpose: The income of hospital packages in a range of months, line by line.
-- Called by: the package income report.
-- Parameters:
--   @Period1  yyyyMM, the first month
--   @Period2  yyyyMM, the last month
-- Returns: Code, Title, Dept, DeptName, Period, BatchDate, BatchType, Batch, Description, Amount (credits less debits); by account, day,
--   batch. The ledger keeps no package numbers, so a line counts where its account or its own text names a package.
CREATE OR ALTER PROCEDURE dbo.sp_Report_PackageIncome
    @Period1 varchar(6),
    @Period2 varchar(6)
AS
BEGIN
    SET NOCOUNT ON;

    EXEC dbo.Private_CheckPeriod @Period1;
    EXEC dbo.Private_CheckPeriod @Period2;
    SELECT
        G.Code, A.Description AS Title, G.Dept, ISNULL(C.Description, '') AS DeptName, G.Period, G.BatchDate, G.BatchType, G.Batch,
        ISNULL(G.Description, '') AS Description, G.Credit - G.Debit AS Amount
    FROM dbo.GL AS G
    INNER JOIN dbo.AcctCode AS A ON A.Code = G.Code
    LEFT JOIN dbo.CstCtr AS C ON C.CstCtr = G.Dept
    WHERE G.Period BETWEEN @Period1 AND @Period2 AND A.Type = 'IN' AND G.BatchType <> 'BB'
      AND (A.Description LIKE '%PACKAGE%' OR G.Description LIKE '%PACKAGE%')
    ORDER BY G.Code, G.BatchDate, G.BatchType, G.Batch, G.SeqNo;
END;
