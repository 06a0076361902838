-- Purpose: Tells whether payment terms are used and so must stay.
-- Called by: the terms screen before a delete.
-- Parameters:
--   @TermsID  terms
-- Returns: UsedBy, one row for each kind of record that names them; no row when nothing does
CREATE OR ALTER PROCEDURE dbo.sp_VerifyTerms
    @TermsID smallint
AS
BEGIN
    SET NOCOUNT ON;
    SELECT 'vendor' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.VEND AS V WHERE V.APTerm = @TermsID)
    UNION ALL
    SELECT 'payable' AS UsedBy WHERE EXISTS (SELECT 1 FROM dbo.AP AS A WHERE A.TermsID = @TermsID);
END;
