-- Purpose: Creates or replaces a payable type.
-- Called by: the payable type screen.
-- Parameters:
--   @Code         key
--   @Description  name
--   @Status       A (active) or I (inactive)
--   @VATClass     class of VAT
--   @AcctCode, @APAcct, @ITxAcctCode, @DisAcctCode  purchase, payable, input tax and discount account, or empty
-- Errors: 50001 empty name
-- Writes: APTYPE
CREATE OR ALTER PROCEDURE dbo.sp_Update_PayableType
    @Code smallint,
    @Description varchar(60),
    @Status varchar(1),
    @VATClass varchar(5),
    @AcctCode varchar(15),
    @APAcct varchar(15),
    @ITxAcctCode varchar(15),
    @DisAcctCode varchar(15)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF @Code IS NULL OR LTRIM(ISNULL(@Description, '')) = '' THROW 50001, 'A payable type needs a code and a name.', 1;
    UPDATE dbo.APTYPE
    SET Description = @Description, Status = @Status, VATClass = @VATClass, AcctCode = NULLIF(@AcctCode, ''),
        APAcct = NULLIF(@APAcct, ''), ITxAcctCode = NULLIF(@ITxAcctCode, ''), DisAcctCode = NULLIF(@DisAcctCode, '')
    WHERE Code = @Code;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.APTYPE (Code, Description, Status, VATClass, AcctCode, APAcct, ITxAcctCode, DisAcctCode)
        VALUES (
            @Code, @Description, @Status, @VATClass, NULLIF(@AcctCode, ''), NULLIF(@APAcct, ''), NULLIF(@ITxAcctCode, ''),
            NULLIF(@DisAcctCode, '')
        );
END;
