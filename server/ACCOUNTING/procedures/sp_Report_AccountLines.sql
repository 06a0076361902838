-- Purpose: The ledger of accounts over months: the balance before, then every line.
-- Called by: the detailed general ledger and the account detail templates.
-- Parameters:
--   @Code      account; empty takes all
--   @Period1   yyyyMM, the first month; it must be prepared
--   @Period2   yyyyMM, the last month
--   @Dept      cost centre; "*" gives each by itself; empty takes all together
--   @Division  division whose cost centres count; "*" gives each division by itself; empty the whole hospital
-- Returns: Division, DivisionName, GroupDept (the cost centre where it is asked for), DeptName, Code, Title, Kind (0 beginning balance,
--   1 line), Period, BatchDate, BatchType, Batch, Dept, Description (of the line, or of its document), Opening (debit less
--   credit), Debit, Credit; in the order of a ledger
-- Errors: 50006 no period, 50030 not prepared
CREATE OR ALTER PROCEDURE dbo.sp_Report_AccountLines
    @Code varchar(15),
    @Period1 varchar(6),
    @Period2 varchar(6),
    @Dept varchar(10) = '',
    @Division varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;

    EXEC dbo.Private_RefuseUnprepared @Period1;
    EXEC dbo.Private_CheckPeriod @Period2;
    SELECT
        CASE WHEN @Division = '' THEN '' ELSE ISNULL(C.DeptCode, '') END AS Division,
        CASE WHEN @Division = '' THEN '' ELSE ISNULL(D.DEPARTMENT, '') END AS DivisionName,
        CASE WHEN @Dept = '' THEN '' ELSE L.Dept END AS GroupDept,
        CASE WHEN @Dept = '' THEN '' ELSE ISNULL(C.Description, '') END AS DeptName,
        L.Code, ISNULL(A.Description, '(not in the chart)') AS Title, L.Kind, L.Period, L.BatchDate, L.BatchType, L.Batch, L.Dept,
        -- where a line only repeats its account, what its document is about says more
        CASE
            WHEN L.Particular <> '' AND LEFT(L.Description, LEN(A.Description)) = A.Description THEN L.Particular
            ELSE L.Description
        END AS Description,
        L.Opening, L.Debit, L.Credit
    FROM (
        SELECT
            B.Code, 0 AS Kind, @Period1 AS Period, CAST(NULL AS datetime) AS BatchDate, '' AS BatchType, '' AS Batch, B.Dept,
            'Beginning balance' AS Description, '' AS Particular, SUM(B.Beginning) AS Opening, CAST(0 AS money) AS Debit,
            CAST(0 AS money) AS Credit, 0 AS SeqNo
        FROM (
            SELECT P.Code, CASE WHEN @Dept = '' AND @Division = '' THEN '' ELSE P.Dept END AS Dept, P.Beginning
            FROM dbo.PeriodBalance AS P
            WHERE P.Period = @Period1 AND (@Code = '' OR P.Code = @Code)
        ) AS B
        GROUP BY B.Code, B.Dept
        HAVING SUM(B.Beginning) <> 0 OR (@Dept = '' AND @Division = '')
        UNION ALL
        SELECT
            G.Code, 1 AS Kind, G.Period, G.BatchDate, G.BatchType, G.Batch, G.Dept, ISNULL(G.Description, '') AS Description,
            ISNULL(H.Particular, '') AS Particular, CAST(0 AS money) AS Opening, G.Debit, G.Credit, G.SeqNo
        FROM dbo.GL AS G
        LEFT JOIN dbo.vwBookBatch AS H ON H.Book = G.BatchType AND H.Batch = G.Batch
        WHERE G.Period BETWEEN @Period1 AND @Period2 AND G.BatchType <> 'BB' AND G.Code <> '' AND (@Code = '' OR G.Code = @Code)
    ) AS L
    LEFT JOIN dbo.AcctCode AS A ON A.Code = L.Code
    LEFT JOIN dbo.CstCtr AS C ON C.CstCtr = L.Dept
    LEFT JOIN dbo.DEPARTMENTS AS D ON D.CODE = C.DeptCode
    WHERE (@Dept IN ('', '*') OR L.Dept = @Dept) AND (@Division IN ('', '*') OR C.DeptCode = @Division)
    ORDER BY
        CASE WHEN @Division = '' THEN '' ELSE ISNULL(C.DeptCode, '') END, L.Code, CASE WHEN @Dept = '' THEN '' ELSE L.Dept END,
        L.Kind, L.Period, L.BatchDate, L.BatchType, L.Batch, L.SeqNo;
END;
