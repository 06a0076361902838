-- Purpose: The lines of a batch in their order.
-- Called by: the journal entry screen.
-- Parameters:
--   @BookCode  JV, AR or CR
--   @Batch     batch number
-- Returns: Code, Dept, Description, Debit, Credit, Voucher (payable voucher that the line touches), SubCode, SeqNo
-- Errors: 50005 for another book
CREATE OR ALTER PROCEDURE dbo.sp_Load_BatchDT
    @BookCode varchar(4),
    @Batch varchar(15)
AS
BEGIN
    SET NOCOUNT ON;
    DECLARE @Text varchar(200);
    IF ISNULL(@BookCode, '') NOT IN ('JV', 'AR', 'CR')
    BEGIN
        SET @Text = 'Book "' + ISNULL(@BookCode, '') + '" has no journal batches.';
        THROW 50005, @Text, 1;
    END;
    IF @BookCode = 'JV'
        SELECT D.Code, D.Dept, D.Description, D.Debit, D.Credit, L.ApVoucher AS Voucher, D.SubCode, D.SeqNo
        FROM dbo.JVDT AS D
        LEFT JOIN dbo.APCDB AS L ON L.CVNo = D.Batch AND L.BookCode = 'JV' AND L.SeqNo = D.SeqNo
        WHERE D.Batch = @Batch
        ORDER BY D.SeqNo;
    IF @BookCode = 'AR'
        SELECT D.Code, D.Dept, D.Description, D.Debit, D.Credit, L.ApVoucher AS Voucher, CAST(NULL AS varchar(15)) AS SubCode, D.SeqNo
        FROM dbo.ARDT AS D
        LEFT JOIN dbo.APCDB AS L ON L.CVNo = D.Batch AND L.BookCode = 'AR' AND L.SeqNo = D.SeqNo
        WHERE D.Batch = @Batch
        ORDER BY D.SeqNo;
    IF @BookCode = 'CR'
        SELECT D.Code, D.Dept, D.Description, D.Debit, D.Credit, L.ApVoucher AS Voucher, D.SubCode, D.SeqNo
        FROM dbo.CRBDT AS D
        LEFT JOIN dbo.APCDB AS L ON L.CVNo = D.Batch AND L.BookCode = 'CR' AND L.SeqNo = D.SeqNo
        WHERE D.Batch = @Batch
        ORDER BY D.SeqNo;
END;
