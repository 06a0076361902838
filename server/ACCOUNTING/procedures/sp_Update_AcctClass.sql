-- Purpose: Creates or replaces an account classification.
-- Called by: the classification screen.
-- Parameters:
--   @ClassID         key
--   @Classification  name
--   @Status          A (active) or I (inactive)
--   @PaymentID       kind of payment, or empty
-- Errors: 50001 empty key or name
-- Writes: AcctCodeClass
CREATE OR ALTER PROCEDURE dbo.sp_Update_AcctClass
    @ClassID varchar(10),
    @Classification varchar(100),
    @Status varchar(1) = 'A',
    @PaymentID varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF LTRIM(ISNULL(@ClassID, '')) = '' OR LTRIM(ISNULL(@Classification, '')) = ''
        THROW 50001, 'A classification needs a key and a name.', 1;
    UPDATE dbo.AcctCodeClass
    SET Classification = @Classification, Status = @Status, PaymentID = NULLIF(@PaymentID, '')
    WHERE ClassID = @ClassID;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.AcctCodeClass (ClassID, Classification, Status, PaymentID)
        VALUES (@ClassID, @Classification, @Status, NULLIF(@PaymentID, ''));
END;
