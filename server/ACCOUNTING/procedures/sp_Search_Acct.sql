-- Purpose: Finds accounts that take lines, by code or by a part of the title.
-- Called by: the account lookup of every screen.
-- Parameters:
--   @Flag  1 the account of exactly this code, 2 how many match, 0 the matches, 3 the master accounts that match
--   @Text  code, beginning of a code, or a part of the title; "%" matches all
--   @Mode  ALL, BANK (bank accounts), or a type of account (AS, LI, EQ, IN, EX); anything else counts as ALL
-- Returns: flag 1: Code, Description, Type, Subsidiary, IsBankAcct, Class, GLGroup; flag 2: RecCount;
--   flags 0 and 3: [Account Title], Code, Type, by title
-- Errors: 50001 for another flag
CREATE OR ALTER PROCEDURE dbo.sp_Search_Acct
    @Flag varchar(1),
    @Text varchar(100),
    @Mode varchar(10) = 'ALL'
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Like varchar(220);
    IF @Flag NOT IN ('0', '1', '2', '3') THROW 50001, 'The flag of an account search must be 0, 1, 2 or 3.', 1;
    IF @Flag = '1'
    BEGIN
        SELECT
            A.Code, A.Description, A.Type, A.Subsidiary, A.IsBankAcct, A.Class, A.GLGroup, A.BudgetClassID, A.DefaultDept,
            A.Description AS AccountTitle
        FROM dbo.AcctCode AS A
        WHERE A.Code = @Text AND A.Mast_Dept <> 'MAS' AND (@Mode <> 'BANK' OR A.IsBankAcct = 1)
            AND (@Mode NOT IN ('AS', 'LI', 'EQ', 'IN', 'EX') OR A.Type = @Mode);
        RETURN;
    END;

    SET @Like = REPLACE(REPLACE(@Text, '[', '[[]'), '_', '[_]') + '%';
    IF @Flag = '2'
    BEGIN
        SELECT COUNT(*) AS RecCount
        FROM dbo.AcctCode AS A
        WHERE (A.Code LIKE @Like OR A.Description LIKE '%' + @Like) AND A.Mast_Dept <> 'MAS'
            AND (@Mode <> 'BANK' OR A.IsBankAcct = 1) AND (@Mode NOT IN ('AS', 'LI', 'EQ', 'IN', 'EX') OR A.Type = @Mode);
        RETURN;
    END;

    SELECT A.Description AS [Account Title], A.Code, A.Type
    FROM dbo.AcctCode AS A
    WHERE (A.Code LIKE @Like OR A.Description LIKE '%' + @Like)
        AND ((@Flag = '0' AND A.Mast_Dept <> 'MAS') OR (@Flag = '3' AND A.Mast_Dept = 'MAS'))
        AND (@Mode <> 'BANK' OR A.IsBankAcct = 1) AND (@Mode NOT IN ('AS', 'LI', 'EQ', 'IN', 'EX') OR A.Type = @Mode)
    ORDER BY A.Description, A.Code;
END;
