-- Purpose: Creates or replaces a schedule group; its accounts take over its type and class.
-- Called by: the group editor, the import of a chart.
-- Parameters:
--   @GLGroup      group
--   @Description  name
--   @Type         AS, LI, EQ, IN or EX
--   @Class        class within the type
--   @MainGroup    group above, or empty
-- Errors: 50001 empty group or name, 50002 unknown main group or one that would stand below itself, 50007 a type that is neither
--   income nor expense for a group whose accounts have departments
-- Writes: GLGROUP, AcctCode
CREATE OR ALTER PROCEDURE dbo.sp_Update_GLGroup
    @GLGroup varchar(10),
    @Description varchar(100),
    @Type varchar(2),
    @Class varchar(2) = '',
    @MainGroup varchar(10) = ''
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    IF LTRIM(ISNULL(@GLGroup, '')) = '' OR LTRIM(ISNULL(@Description, '')) = '' OR ISNULL(@Type, '') NOT IN ('AS', 'LI', 'EQ', 'IN', 'EX')
        THROW 50001, 'A group needs a code, a name and a type.', 1;
    SET @MainGroup = NULLIF(LTRIM(@MainGroup), '');
    IF @MainGroup = @GLGroup OR (@MainGroup IS NOT NULL AND NOT EXISTS (
        SELECT 1 FROM dbo.GLGROUP AS G WHERE G.GLGroup = @MainGroup
    ))
        THROW 50002, 'The main group must be another group that exists.', 1;


    -- Up the groups above: none of them may be this one.
    DECLARE @Above varchar(10), @Steps int;
    SET @Above = @MainGroup;
    SET @Steps = 0;
    WHILE @Above IS NOT NULL AND @Steps < 100
    BEGIN
        SET @Above = (SELECT NULLIF(LTRIM(G.MainGroup), '') FROM dbo.GLGROUP AS G WHERE G.GLGroup = @Above);
        SET @Steps = @Steps + 1;
        IF @Above = @GLGroup THROW 50002, 'A group cannot stand below one of its own groups.', 1;
    END;
    IF @Type NOT IN ('IN', 'EX') AND EXISTS (SELECT 1 FROM dbo.AcctCode AS A WHERE A.GLGroup = @GLGroup AND A.Subsidiary = 1)
        THROW 50007, 'Accounts of this group have departments, which belong to income and expense accounts only.', 1;

    BEGIN TRANSACTION;
    UPDATE dbo.GLGROUP
    SET Description = @Description, Type = @Type, Class = ISNULL(@Class, ''), MainGroup = @MainGroup
    WHERE GLGroup = @GLGroup;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.GLGROUP (GLGroup, Description, Type, Class, MainGroup)
        VALUES (@GLGroup, @Description, @Type, ISNULL(@Class, ''), @MainGroup);
    UPDATE dbo.AcctCode SET Type = @Type, Class = ISNULL(@Class, '') WHERE GLGroup = @GLGroup;
    COMMIT TRANSACTION;
END;
