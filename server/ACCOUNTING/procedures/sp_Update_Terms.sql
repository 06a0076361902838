-- Purpose: Creates or replaces payment terms.
-- Called by: the terms screen.
-- Parameters:
--   @TermsID  key
--   @Terms    name
--   @NoDays   days to the due date
--   @Status   A (active) or I (inactive)
-- Errors: 50001 empty name
-- Writes: TERMS
CREATE OR ALTER PROCEDURE dbo.sp_Update_Terms
    @TermsID smallint,
    @Terms varchar(60),
    @NoDays int = 0,
    @Status varchar(1) = 'A'
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF @TermsID IS NULL OR LTRIM(ISNULL(@Terms, '')) = '' THROW 50001, 'Terms need a number and a name.', 1;
    UPDATE dbo.TERMS SET Terms = @Terms, NoDays = @NoDays, Status = @Status WHERE TermsID = @TermsID;
    IF @@ROWCOUNT = 0 INSERT INTO dbo.TERMS (TermsID, Terms, NoDays, Status) VALUES (@TermsID, @Terms, @NoDays, @Status);
END;
