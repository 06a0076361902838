-- Purpose: Whether any line, opening figure or setting uses an account.
-- Called by: sp_VerifyAcct, sp_Update_AcctCode.
-- Parameters:
--   @Code  account code
-- Returns: 1 when it is used, else 0
CREATE OR ALTER FUNCTION dbo.Private_AcctUsed (@Code varchar(15))
RETURNS int
AS
BEGIN
    IF EXISTS (SELECT 1 FROM dbo.JVDT AS D WHERE D.Code = @Code) RETURN 1;
    IF EXISTS (SELECT 1 FROM dbo.ARDT AS D WHERE D.Code = @Code) RETURN 1;
    IF EXISTS (SELECT 1 FROM dbo.CRBDT AS D WHERE D.Code = @Code) RETURN 1;
    IF EXISTS (SELECT 1 FROM dbo.APDT AS D WHERE D.Code = @Code) RETURN 1;
    IF EXISTS (SELECT 1 FROM dbo.CDBDT AS D WHERE D.Code = @Code) RETURN 1;
    IF EXISTS (SELECT 1 FROM dbo.GL AS G WHERE G.Code = @Code) RETURN 1;
    IF EXISTS (SELECT 1 FROM dbo.BegBalance AS B WHERE B.Acct = @Code) RETURN 1;
    IF EXISTS (SELECT 1 FROM dbo.BegBalDT AS B WHERE B.Acct = @Code) RETURN 1;
    IF EXISTS (SELECT 1 FROM dbo.BANK AS B WHERE B.Acct = @Code) RETURN 1;
    IF EXISTS (
        SELECT 1
        FROM dbo.SYS AS S
        WHERE @Code IN (
            S.CSHAcct, S.APAcct, S.WTax, S.EWTax, S.VATCode, S.Vatable, S.CashInBank, S.ARAcct, S.CRBAcct, S.RetainedEarning,
            S.FixedAsset, S.ProfitLoss, S.AEAcct, S.payAcct
        )
    ) RETURN 1;
    IF EXISTS (SELECT 1 FROM dbo.APTYPE AS T WHERE @Code IN (T.AcctCode, T.APAcct, T.ITxAcctCode, T.DisAcctCode)) RETURN 1;
    RETURN 0;
END;
