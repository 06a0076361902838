-- Purpose: The subsidiary ledger of a range of days: each vendor or cost centre of an account with its balance before and every line.
-- Called by: the subsidiary ledger report.
-- Parameters:
--   @Date1  first day
--   @Date2  last day
-- Returns: Code, Title, Sub (vendor, or cost centre), SubName, Kind (0 balance before, 1 line), BatchDate, BatchType, Batch, Description,
--   Opening (debit less credit), Debit, Credit; in the order of a ledger. Accounts with departments are kept by cost centre, liabilities
--   and the advances of the settings by vendor; others have no subsidiary ledger. The balance before runs from the last opened year,
--   straight from the ledger, since prepared figures know no vendors.
CREATE OR ALTER PROCEDURE dbo.sp_Report_SubsidiaryLedger
    @Date1 datetime,
    @Date2 datetime
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Opened varchar(6);
    DECLARE @Last varchar(6);
    SET @Last = CONVERT(varchar(6), @Date2, 112);
    SELECT @Opened = MAX(G.Period) FROM dbo.GL AS G WHERE G.BatchType = 'BB' AND G.Period <= CONVERT(varchar(6), @Date1, 112);
    SET @Opened = ISNULL(@Opened, '000000');

    SELECT
        L.Code, A.Description AS Title, L.Sub,
        ISNULL(ISNULL(V.Vendor, C.Description), CASE WHEN L.Sub = '' THEN '(neither vendor nor cost centre)' ELSE '' END) AS SubName,
        L.Kind, L.BatchDate, L.BatchType, L.Batch, L.Description, L.Opening, L.Debit, L.Credit
    FROM (
        SELECT
            B.Code, B.Sub, 0 AS Kind, CAST(NULL AS datetime) AS BatchDate, '' AS BatchType, '' AS Batch, 0 AS SeqNo,
            'Balance before' AS Description, SUM(B.Amount) AS Opening, CAST(0 AS money) AS Debit, CAST(0 AS money) AS Credit
        FROM (
            SELECT
                G.Code, CASE WHEN A.Subsidiary = 1 THEN G.Dept ELSE ISNULL(G.SubCode, '') END AS Sub, G.Debit - G.Credit AS Amount
            FROM dbo.GL AS G
            INNER JOIN dbo.AcctCode AS A ON A.Code = G.Code
            WHERE G.Period BETWEEN @Opened AND @Last AND (G.BatchType = 'BB' OR G.BatchDate < @Date1)
        ) AS B
        GROUP BY B.Code, B.Sub
        HAVING SUM(B.Amount) <> 0
        UNION ALL
        SELECT
            G.Code, CASE WHEN A.Subsidiary = 1 THEN G.Dept ELSE ISNULL(G.SubCode, '') END AS Sub, 1 AS Kind, G.BatchDate, G.BatchType,
            G.Batch, G.SeqNo, ISNULL(G.Description, '') AS Description, CAST(0 AS money) AS Opening, G.Debit, G.Credit
        FROM dbo.GL AS G
        INNER JOIN dbo.AcctCode AS A ON A.Code = G.Code
        WHERE G.Period BETWEEN @Opened AND @Last AND G.BatchType <> 'BB'
          AND G.BatchDate >= @Date1 AND G.BatchDate < DATEADD(DAY, 1, @Date2)
    ) AS L
    INNER JOIN dbo.AcctCode AS A ON A.Code = L.Code
    LEFT JOIN dbo.vwVENDOR AS V ON V.VendorID = L.Sub
    LEFT JOIN dbo.CstCtr AS C ON C.CstCtr = L.Sub
    WHERE A.Subsidiary = 1 OR A.Type = 'LI' OR L.Code IN (
        SELECT X.ParamValue FROM dbo.PARAMETERS AS X WHERE X.Code IN ('ADVANCESTOSUPPLIERCODE', 'ADVANCESTOEMPLOYEECODE')
    )
    ORDER BY L.Code, L.Sub, L.Kind, L.BatchDate, L.BatchType, L.Batch, L.SeqNo;
END;
