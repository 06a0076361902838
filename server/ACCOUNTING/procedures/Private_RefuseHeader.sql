-- Purpose: Refuses the header of a batch that has no number or period, or that is cancelled or posted.
-- Called by: sp_Insert_AR, sp_Insert_CRB, sp_Insert_JV.
-- Parameters:
--   @Book       AR, CR or JV
--   @Batch      batch number
--   @Period     yyyyMM
--   @Posted     1 when the batch stands posted; NULL for a new one
--   @Cancelled  1 when it is cancelled
-- Errors: 50001 empty number, 50003 cancelled, 50004 posted, 50006 no period
CREATE OR ALTER PROCEDURE dbo.Private_RefuseHeader
    @Book varchar(4),
    @Batch varchar(15),
    @Period varchar(6),
    @Posted bit,
    @Cancelled bit
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Text varchar(200);
    IF ISNULL(@Batch, '') = '' THROW 50001, 'A batch needs a number.', 1;
    EXEC dbo.Private_CheckPeriod @Period;
    IF @Cancelled = 1
    BEGIN
        SET @Text = 'Batch ' + @Batch + ' of book ' + @Book + ' is cancelled.';
        THROW 50003, @Text, 1;
    END;
    IF @Posted = 1
    BEGIN
        SET @Text = 'Batch ' + @Batch + ' of book ' + @Book + ' is posted. Unpost it first.';
        THROW 50004, @Text, 1;
    END;
END;
