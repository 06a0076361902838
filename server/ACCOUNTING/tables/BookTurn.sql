-- Purpose: One row a book, by which closing and reopening take turns.
-- Kept by: Private_TakeTurn.
-- Columns: Turn counts the closes and reopenings; its row is locked until the end of each.
IF OBJECT_ID('dbo.BookTurn', 'U') IS NULL
CREATE TABLE dbo.BookTurn (
    Book varchar(4) NOT NULL,
    Turn int NOT NULL,
    CONSTRAINT PK_BookTurn PRIMARY KEY (Book)
);
