-- Purpose: Removes what a journal batch recorded about payable vouchers, before its lines are written again.
-- Called by: the journal entry screen.
-- Parameters:
--   @Batch     batch number
--   @BookCode  JV, AR or CR; anything else stands for all three
-- Writes: APCDB, VouchersPayable
CREATE OR ALTER PROCEDURE dbo.sp_Init_APCDB
    @Batch varchar(20),
    @BookCode varchar(6)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF NOT EXISTS (SELECT 1 FROM dbo.APCDB AS L WHERE L.CVNo = @Batch AND L.BookCode <> 'CD') RETURN;
    BEGIN TRANSACTION;
    DELETE FROM dbo.VouchersPayable
    WHERE Reference = @Batch AND Source IN ('JV', 'AR', 'CR') AND Voucher IN (
        SELECT L.ApVoucher
        FROM dbo.APCDB AS L
        WHERE L.CVNo = @Batch AND L.BookCode IN ('JV', 'AR', 'CR')
            AND (L.BookCode = @BookCode OR ISNULL(@BookCode, '') NOT IN ('JV', 'AR', 'CR'))
    );
    DELETE FROM dbo.APCDB
    WHERE CVNo = @Batch AND BookCode IN ('JV', 'AR', 'CR')
        AND (BookCode = @BookCode OR ISNULL(@BookCode, '') NOT IN ('JV', 'AR', 'CR'));
    COMMIT TRANSACTION;
END;
