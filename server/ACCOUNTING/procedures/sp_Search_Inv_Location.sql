-- Purpose: Finds the cost centres that locations of the inventory stand for.
-- Called by: the cost centre lookup "Cost Centers Link to Inventory".
-- Parameters:
--   @Text  beginning of a cost centre's name or of a location's name; empty for all
-- Returns: Description, Code (cost centre), Location, LocationID, by Description
CREATE OR ALTER PROCEDURE dbo.sp_Search_Inv_Location
    @Text varchar(100) = ''
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Like varchar(220);
    SET @Like = REPLACE(REPLACE(@Text, '[', '[[]'), '_', '[_]') + '%';
    SELECT C.Description, C.CstCtr AS Code, I.Location, L.LocationID
    FROM dbo.CSTCTRLOCATION AS L
    INNER JOIN dbo.CstCtr AS C ON C.CstCtr = L.CstCtr
    LEFT JOIN INVENTORY.dbo.tbInvLocation AS I ON I.LocationID = L.LocationID
    WHERE C.Description LIKE @Like OR I.Location LIKE @Like
    ORDER BY C.Description, L.LocationID;
END;
