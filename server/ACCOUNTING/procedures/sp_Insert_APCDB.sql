-- Purpose: Records that a document touches a payable voucher.
-- Called by: journal entry, check vouchers, debit and credit memos.
-- Parameters:
--   @Voucher   payable voucher
--   @CVNo      the document: batch or check voucher number
--   @Amount    debit less credit on the payable account; what is paid is positive
--   @Acct      payable account
--   @BookCode  book of the document, CD for a check voucher
--   @SeqNo     line of the document, or NULL
-- Errors: 50001 empty voucher or document
-- Writes: APCDB
CREATE OR ALTER PROCEDURE dbo.sp_Insert_APCDB
    @Voucher varchar(20),
    @CVNo varchar(20),
    @Amount money,
    @Acct varchar(15),
    @BookCode varchar(4) = 'CD',
    @SeqNo int = NULL
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF ISNULL(@Voucher, '') = '' OR ISNULL(@CVNo, '') = '' THROW 50001, 'A payable link needs a voucher and a document.', 1;
    INSERT INTO dbo.APCDB (CVNo, BookCode, ApVoucher, Amt_Paid, Acct, SeqNo)
    VALUES (@CVNo, @BookCode, @Voucher, @Amount, @Acct, @SeqNo);
END;
