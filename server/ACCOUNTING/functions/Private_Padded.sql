-- Purpose: A number with leading zeros; a number of more digits widens the text.
-- Called by: the functions that give formatted numbers.
-- Parameters:
--   @Number  the number, not negative
--   @Width   digits wanted
-- Returns: the text
CREATE OR ALTER FUNCTION dbo.Private_Padded (@Number int, @Width int)
RETURNS varchar(20)
AS
BEGIN
    DECLARE @Text varchar(20);
    SET @Text = CAST(@Number AS varchar(20));
    IF LEN(@Text) < @Width SET @Text = RIGHT(REPLICATE('0', @Width) + @Text, @Width);
    RETURN @Text;
END;
