-- Purpose: The beginning figures of a book and period.
-- Called by: the beginning balance screen of a period.
-- Parameters:
--   @Period  yyyyMM
--   @Book    AP, CD, CR, AR or JV
-- Returns: AccountCode, Dept, Description (account title), Debit, Credit; in the order of entry
CREATE OR ALTER PROCEDURE dbo.sp_Load_BegBalDT
    @Period varchar(6),
    @Book varchar(4)
AS
BEGIN
    SET NOCOUNT ON;
    SELECT B.Acct AS AccountCode, ISNULL(B.Dept, '') AS Dept, A.Description, B.Debit, B.Credit
    FROM dbo.BegBalDT AS B
    LEFT JOIN dbo.AcctCode AS A ON A.Code = B.Acct
    WHERE B.Period = @Period AND B.BatchType = @Book
    ORDER BY B.EntryID;
END;
