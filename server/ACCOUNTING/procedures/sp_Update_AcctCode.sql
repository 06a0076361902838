-- Purpose: Creates or replaces an account; type and class are those of its group.
-- Called by: the account editor, the import of a chart.
-- Parameters:
--   @Code            account code
--   @Description     title
--   @Type            type, used only where the group is not known; usually empty
--   @Class           class, used only where the group is not known; usually empty
--   @Budget          budget class, or empty
--   @Mast            "MAS" for an account that only heads others, else empty
--   @GLGroup         schedule group
--   @Subsidiary      0 none, 1 departments
--   @DefaultDept     cost centre proposed on a line, or empty
--   @Classification  ClassID of AcctCodeClass, or empty
--   @IsBankAcct      1 for a bank account; NULL keeps what is stored
-- Errors: 50001 empty code or title, 50002 unknown group, 50007 departments on an account that is neither income nor expense,
--   50008 a master account that lines use
-- Writes: AcctCode
CREATE OR ALTER PROCEDURE dbo.sp_Update_AcctCode
    @Code varchar(15),
    @Description varchar(100),
    @Type varchar(2),
    @Class varchar(2),
    @Budget varchar(10),
    @Mast varchar(3),
    @GLGroup varchar(10),
    @Subsidiary smallint,
    @DefaultDept varchar(10) = '',
    @Classification varchar(10) = '',
    @IsBankAcct bit = NULL
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    DECLARE @Text varchar(200);
    IF LTRIM(ISNULL(@Code, '')) = '' OR LTRIM(ISNULL(@Description, '')) = ''
        THROW 50001, 'An account needs a code and a title.', 1;
    SET @GLGroup = NULLIF(LTRIM(@GLGroup), '');
    IF @GLGroup IS NOT NULL
    BEGIN
        SET @Type = NULL;
        SELECT @Type = G.Type, @Class = G.Class FROM dbo.GLGROUP AS G WHERE G.GLGroup = @GLGroup;
        IF @Type IS NULL
        BEGIN
            SET @Text = 'There is no group "' + @GLGroup + '".';
            THROW 50002, @Text, 1;
        END;
    END;
    IF ISNULL(@Subsidiary, 0) = 1 AND @Type NOT IN ('IN', 'EX')
        THROW 50007, 'Departments belong to income and expense accounts only.', 1;
    IF @Mast = 'MAS' AND dbo.Private_AcctUsed(@Code) = 1
    BEGIN
        SET @Text = 'Account ' + @Code + ' has lines and cannot become a master account.';
        THROW 50008, @Text, 1;
    END;

    UPDATE dbo.AcctCode
    SET Description = @Description, Type = @Type, Class = ISNULL(@Class, ''), GLGroup = @GLGroup,
        Subsidiary = ISNULL(@Subsidiary, 0), Mast_Dept = ISNULL(@Mast, ''), BudgetClassID = NULLIF(@Budget, ''),
        DefaultDept = NULLIF(@DefaultDept, ''), Classification = NULLIF(@Classification, ''),
        IsBankAcct = ISNULL(@IsBankAcct, IsBankAcct)
    WHERE Code = @Code;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.AcctCode (
            Code, Description, Type, Class, GLGroup, Subsidiary, Mast_Dept, BudgetClassID, DefaultDept, Classification, IsBankAcct
        )
        VALUES (
            @Code, @Description, @Type, ISNULL(@Class, ''), @GLGroup, ISNULL(@Subsidiary, 0), ISNULL(@Mast, ''),
            NULLIF(@Budget, ''), NULLIF(@DefaultDept, ''), NULLIF(@Classification, ''), ISNULL(@IsBankAcct, 0)
        );
END;
