-- Purpose: The opening balances of a year, one row for every account that takes lines or holds a figure.
-- Called by: the beginning balance screen of a year.
-- Parameters:
--   @Year   four digits
--   @Spare  not used, empty
-- Returns: Code, Description, Debit, Credit; by account
CREATE OR ALTER PROCEDURE dbo.sp_Load_BegBalance
    @Year varchar(4),
    @Spare varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SELECT A.Code, A.Description, ISNULL(B.Debit, 0) AS Debit, ISNULL(B.Credit, 0) AS Credit
    FROM dbo.AcctCode AS A
    LEFT JOIN dbo.BegBalance AS B ON B.Acct = A.Code AND B.Year = @Year
    WHERE A.Mast_Dept <> 'MAS' OR B.Acct IS NOT NULL
    UNION ALL
    SELECT B.Acct AS Code, '(not in the chart)' AS Description, B.Debit, B.Credit
    FROM dbo.BegBalance AS B
    WHERE B.Year = @Year AND NOT EXISTS (SELECT 1 FROM dbo.AcctCode AS A WHERE A.Code = B.Acct)
    ORDER BY Code;
END;
