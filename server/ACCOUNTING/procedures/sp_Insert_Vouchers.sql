-- Purpose: Records a document in the voucher ledger for a payable that has no AP voucher of its own.
-- Called by: journal entry, debit memos.
-- Parameters:
--   @Voucher     the voucher, such as the book and batch of a journal line
--   @Source      JV or CD
--   @Reference   the document: batch or check voucher number
--   @PrintNo     printed number, or empty
--   @ReportDate  date of the document
-- Errors: 50001 empty voucher
-- Writes: VouchersPayable, with the amount that APCDB holds for voucher and document; an earlier entry is replaced
CREATE OR ALTER PROCEDURE dbo.sp_Insert_Vouchers
    @Voucher varchar(20),
    @Source varchar(4),
    @Reference varchar(20),
    @PrintNo varchar(30),
    @ReportDate datetime
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Amount money;
    IF ISNULL(@Voucher, '') = '' THROW 50001, 'A payable entry needs a voucher.', 1;
    SELECT @Amount = SUM(L.Amt_Paid) FROM dbo.APCDB AS L WHERE L.CVNo = @Reference AND L.ApVoucher = @Voucher;
    SET @Amount = ISNULL(@Amount, 0);

    BEGIN TRANSACTION;
    DELETE FROM dbo.VouchersPayable WHERE Voucher = @Voucher AND Source = @Source AND Reference = @Reference;
    INSERT INTO dbo.VouchersPayable (Voucher, Source, Reference, ReportDate, Particulars, Debit, Credit)
    VALUES (
        @Voucher, @Source, @Reference, @ReportDate, NULLIF(@PrintNo, ''),
        CASE WHEN @Amount > 0 THEN @Amount ELSE 0 END, CASE WHEN @Amount < 0 THEN -@Amount ELSE 0 END
    );
    COMMIT TRANSACTION;
END;
