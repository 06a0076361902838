-- Purpose: One account with the names of what it refers to.
-- Called by: the account editor.
-- Parameters:
--   @Code  account code
-- Returns: Code, Description, Type, Subsidiary, IsBankAcct, Class, GLGroup, GLDescription, Mast_Dept, BudgetClassID, Classification
--   (name), ClassID, VendorID, Company, DefaultDept, DefaultDeptDesc
CREATE OR ALTER PROCEDURE dbo.sp_Load_Acct
    @Code varchar(15)
AS
BEGIN
    SET NOCOUNT ON;
    SELECT
        A.Code, A.Description, A.Type, A.Subsidiary, A.IsBankAcct, A.Class, A.GLGroup, G.Description AS GLDescription, A.Mast_Dept,
        A.BudgetClassID, C.Classification, A.Classification AS ClassID, A.VendorID, V.Company, A.DefaultDept,
        D.Description AS DefaultDeptDesc
    FROM dbo.AcctCode AS A
    LEFT JOIN dbo.GLGROUP AS G ON G.GLGroup = A.GLGroup
    LEFT JOIN dbo.AcctCodeClass AS C ON C.ClassID = A.Classification
    LEFT JOIN dbo.VEND AS V ON V.VendorID = A.VendorID
    LEFT JOIN dbo.CstCtr AS D ON D.CstCtr = A.DefaultDept
    WHERE A.Code = @Code;
END;
