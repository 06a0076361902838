-- Purpose: Creates or replaces a department.
-- Called by: the department screen.
-- Parameters:
--   @Code        key
--   @Department  name
-- Errors: 50001 empty key or name
-- Writes: DEPARTMENTS
CREATE OR ALTER PROCEDURE dbo.sp_Update_Departments
    @Code varchar(10),
    @Department varchar(100)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF LTRIM(ISNULL(@Code, '')) = '' OR LTRIM(ISNULL(@Department, '')) = ''
        THROW 50001, 'A department needs a code and a name.', 1;
    UPDATE dbo.DEPARTMENTS SET DEPARTMENT = @Department WHERE CODE = @Code;
    IF @@ROWCOUNT = 0 INSERT INTO dbo.DEPARTMENTS (CODE, DEPARTMENT) VALUES (@Code, @Department);
END;
