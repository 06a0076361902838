-- Purpose: Tells whether a cost centre is used and so must stay.
-- Called by: the cost centre screen before a delete.
-- Parameters:
--   @CstCtr  cost centre
-- Returns: UsedBy, one row for each kind of record that names it; no row when nothing does
CREATE OR ALTER PROCEDURE dbo.sp_VerifyCstCtr
    @CstCtr varchar(10)
AS
BEGIN
    SET NOCOUNT ON;
    SELECT 'journal voucher' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.JVDT AS D WHERE D.Dept = @CstCtr)
    UNION ALL
    SELECT 'receivable' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.ARDT AS D WHERE D.Dept = @CstCtr)
    UNION ALL
    SELECT 'receipt' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.CRBDT AS D WHERE D.Dept = @CstCtr)
    UNION ALL
    SELECT 'payable' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.APDT AS D WHERE D.Dept = @CstCtr)
    UNION ALL
    SELECT 'disbursement' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.CDBDT AS D WHERE D.Dept = @CstCtr)
    UNION ALL
    SELECT 'ledger' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.GL AS G WHERE G.Dept = @CstCtr)
    UNION ALL
    SELECT 'beginning balance' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.BegBalDT AS B WHERE B.Dept = @CstCtr)
    UNION ALL
    SELECT 'account' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.AcctCode AS A WHERE A.DefaultDept = @CstCtr)
    UNION ALL
    SELECT 'revenue code' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.RevenueCode AS R WHERE R.Dept = @CstCtr)
    UNION ALL
    SELECT 'inventory location' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.CSTCTRLOCATION AS L WHERE L.CstCtr = @CstCtr);
END;
