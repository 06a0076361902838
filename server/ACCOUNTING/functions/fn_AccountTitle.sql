-- Purpose: The title of an account, with its cost centre behind it where one is given.
-- Called by: every screen that shows an account's name.
-- Parameters:
--   @Code  account code
--   @Dept  cost centre, or empty
-- Returns: the title; NULL for an unknown account
CREATE OR ALTER FUNCTION dbo.fn_AccountTitle (@Code varchar(15), @Dept varchar(10))
RETURNS varchar(210)
AS
BEGIN
    DECLARE @Title varchar(210);
    SELECT @Title = A.Description FROM dbo.AcctCode AS A WHERE A.Code = @Code;
    IF @Title IS NOT NULL AND ISNULL(@Dept, '') <> ''
    BEGIN
        SELECT @Title = @Title + ' - ' + C.Description FROM dbo.CstCtr AS C WHERE C.CstCtr = @Dept;
    END;
    RETURN @Title;
END;
