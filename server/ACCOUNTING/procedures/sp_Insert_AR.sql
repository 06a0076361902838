-- Purpose: Writes the header of an accounts receivable batch; a number that exists is an update.
-- Life of a batch:
--   entered    Posted 0                sp_Insert_AR; edited by the same call, or deleted with its lines by the entry screen
--   posted     Posted 1                the posting list; back to entered by the unposting list while the month is open
--   in ledger  rows of GL              sp_PostGLtoGL; the batch is locked; back by sp_UnpostBook
-- Called by: the journal entry screen after the lines, uploads.
-- Parameters:
--   @Batch       batch number
--   @BatchDate   date of the batch
--   @BatchType   AR, or the kind of an upload
--   @Total       total that the batch shows
--   @Debit       debit total of the lines
--   @Credit      credit total of the lines
--   @Period      yyyyMM of the date
--   @Particular  narrative
--   @Encoder     employee who saves
-- Errors: 50001 empty number, 50004 posted, 50006 no period, 50010 closed (raised by the table's guard)
-- Writes: AR, NumberSeries, NumberReserved
CREATE OR ALTER PROCEDURE dbo.sp_Insert_AR
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
    SELECT @Posted = ISNULL(A.Posted, 0) FROM dbo.AR AS A WHERE A.Batch = @Batch;
    EXEC dbo.Private_RefuseHeader 'AR', @Batch, @Period, @Posted, 0;

    BEGIN TRANSACTION;
    IF @Posted IS NULL
        INSERT INTO dbo.AR (Batch, BatchDate, BatchType, Period, Particular, Total, Debits, Credits, Encoder)
        VALUES (@Batch, @BatchDate, @BatchType, @Period, @Particular, @Total, @Debit, @Credit, @Encoder);
    ELSE
        UPDATE dbo.AR
        SET BatchDate = @BatchDate, BatchType = @BatchType, Period = @Period, Particular = @Particular, Total = @Total,
            Debits = @Debit, Credits = @Credit, EditEncoder = @Encoder, EditTransDate = GETDATE()
        WHERE Batch = @Batch;
    EXEC dbo.Private_RaiseNumber 'AR', '', '', @Batch;
    COMMIT TRANSACTION;
END;
