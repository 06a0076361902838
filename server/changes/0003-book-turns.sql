-- Purpose: The row of each book by which closing and reopening take turns.
-- Check: a row that stands already is left alone.
INSERT INTO dbo.BookTurn (Book, Turn)
SELECT N.Book, 0
FROM (
    SELECT 'AP' AS Book
    UNION ALL SELECT 'CD'
    UNION ALL SELECT 'CR'
    UNION ALL SELECT 'AR'
    UNION ALL SELECT 'JV'
) AS N
WHERE NOT EXISTS (SELECT 1 FROM dbo.BookTurn AS T WHERE T.Book = N.Book);
