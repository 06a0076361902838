-- Purpose: Creates or replaces a program parameter for this hospital.
-- Called by: program settings.
-- Parameters:
--   @Code         key
--   @ParamValue   value
--   @Description  what it is
-- Writes: PARAMETERS. A row without a hospital is replaced where it stands, so that a later read finds one value only.
CREATE OR ALTER PROCEDURE dbo.sp_Update_Parameters
    @Code varchar(60),
    @ParamValue varchar(200),
    @Description varchar(200) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Client varchar(10);
    IF LTRIM(ISNULL(@Code, '')) = '' THROW 50001, 'The code of a parameter must not be empty.', 1;
    SELECT @Client = ISNULL(S.Client, '') FROM dbo.SYS AS S;
    SET @Client = ISNULL(@Client, '');
    IF NOT EXISTS (SELECT 1 FROM dbo.PARAMETERS AS P WHERE P.Code = @Code AND P.Client = @Client)
        AND EXISTS (SELECT 1 FROM dbo.PARAMETERS AS P WHERE P.Code = @Code AND P.Client = '')
        SET @Client = '';

    UPDATE dbo.PARAMETERS
    SET ParamValue = @ParamValue, Description = @Description
    WHERE Code = @Code AND Client = @Client;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.PARAMETERS (Code, Client, ParamValue, Description)
        VALUES (@Code, @Client, @ParamValue, @Description);
END;
