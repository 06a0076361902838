-- Purpose: Writes the header of a journal voucher; a number that exists is an update.
-- Life of a journal voucher:
--   entered    Posted 0                sp_Insert_JV; edited by the same call while it stays so
--   posted     Posted 1                the posting list; back to entered by the unposting list while the month is open
--   in ledger  rows of GL              sp_PostGLtoGL; the batch is locked; back by sp_UnpostBook
--   cancelled  Cancelled 1             the entry screen; nothing brings it back, no close takes it
-- Called by: the journal entry screen after the lines, uploads.
-- Parameters:
--   @Batch       batch number
--   @BatchDate   date of the batch
--   @BatchType   JV, YE, or the kind of an upload
--   @Total       total that the batch shows
--   @Debit       debit total of the lines
--   @Credit      credit total of the lines
--   @Period      yyyyMM of the date
--   @Particular  narrative
--   @Encoder     employee who saves
-- Errors: 50001 empty number, 50003 cancelled, 50004 posted, 50006 no period, 50010 closed (raised by the table's guard)
-- Writes: JV, NumberSeries, NumberReserved
CREATE OR ALTER PROCEDURE dbo.sp_Insert_JV
    @Batch varchar(15),
    @BatchDate datetime,
    @BatchType varchar(4),
    @Total money,
    @Debit money,
    @Credit money,
    @Period varchar(6),
    @Particular varchar(500),
    @Encoder varchar(15)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Posted bit;
    DECLARE @Cancelled bit;
    SELECT @Posted = J.Posted, @Cancelled = J.Cancelled FROM dbo.JV AS J WHERE J.Batch = @Batch;
    EXEC dbo.Private_RefuseHeader 'JV', @Batch, @Period, @Posted, @Cancelled;

    BEGIN TRANSACTION;
    IF @Posted IS NULL
        INSERT INTO dbo.JV (Batch, BatchDate, BatchType, Period, Particular, Total, Debits, Credits, Encoder)
        VALUES (@Batch, @BatchDate, @BatchType, @Period, @Particular, @Total, @Debit, @Credit, @Encoder);
    ELSE
        UPDATE dbo.JV
        SET BatchDate = @BatchDate, BatchType = @BatchType, Period = @Period, Particular = @Particular, Total = @Total,
            Debits = @Debit, Credits = @Credit, EditEncoder = @Encoder, EditTransDate = GETDATE()
        WHERE Batch = @Batch;
    EXEC dbo.Private_RaiseNumber 'JV', '', '', @Batch;
    COMMIT TRANSACTION;
END;
