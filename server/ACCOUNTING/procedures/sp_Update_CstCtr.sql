-- Purpose: Creates or replaces a cost centre.
-- Called by: the cost centre screen, the import.
-- Parameters:
--   @CODE         key
--   @DESCRIPTION  name
--   @DIVISION     division, or empty
--   @DEPTCODE     department in DEPARTMENTS, or empty
-- Errors: 50001 empty key or name
-- Writes: CstCtr
CREATE OR ALTER PROCEDURE dbo.sp_Update_CstCtr
    @CODE varchar(10),
    @DESCRIPTION varchar(100),
    @DIVISION varchar(10) = '',
    @DEPTCODE varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF LTRIM(ISNULL(@CODE, '')) = '' OR LTRIM(ISNULL(@DESCRIPTION, '')) = ''
        THROW 50001, 'A cost centre needs a code and a name.', 1;
    UPDATE dbo.CstCtr
    SET Description = @DESCRIPTION, Division = NULLIF(@DIVISION, ''), DeptCode = NULLIF(@DEPTCODE, '')
    WHERE CstCtr = @CODE;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.CstCtr (CstCtr, Description, Division, DeptCode)
        VALUES (@CODE, @DESCRIPTION, NULLIF(@DIVISION, ''), NULLIF(@DEPTCODE, ''));
END;
