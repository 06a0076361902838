-- Purpose: Writes the opening balance of one account in a year.
-- Called by: the beginning balance screen of a year.
-- Parameters:
--   @Year    four digits
--   @Code    account
--   @Debit   debit balance
--   @Credit  credit balance
--   @Spare   not used, empty
-- Errors: 50001 empty year or account
-- Writes: BegBalance. A line with two zeros writes nothing; an account that stands twice is added up.
CREATE OR ALTER PROCEDURE dbo.sp_Insert_BegBalance
    @Year varchar(4),
    @Code varchar(15),
    @Debit money,
    @Credit money,
    @Spare varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF ISNULL(@Year, '') NOT LIKE '[12][0-9][0-9][0-9]' OR ISNULL(@Code, '') = ''
        THROW 50001, 'An opening balance needs a year and an account.', 1;
    IF ISNULL(@Debit, 0) = 0 AND ISNULL(@Credit, 0) = 0 RETURN;
    UPDATE dbo.BegBalance
    SET Debit = Debit + ISNULL(@Debit, 0), Credit = Credit + ISNULL(@Credit, 0)
    WHERE Year = @Year AND Acct = @Code;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.BegBalance (Year, Acct, Code, Debit, Credit)
        VALUES (@Year, @Code, @Code, ISNULL(@Debit, 0), ISNULL(@Credit, 0));
END;
