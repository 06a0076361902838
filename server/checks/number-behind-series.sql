-- Title: No document number lies beyond its series
-- Explanation: The last number of a series must be at least the highest number in use, else the next draw would give a number that
--   stands already.
SELECT N.Series, N.LastNo, MAX(CAST(B.Batch AS int)) AS HighestNumber
FROM dbo.NumberSeries AS N
INNER JOIN dbo.vwBookBatch AS B ON B.Book = N.Series AND B.Batch NOT LIKE '%[^0-9]%' AND LEN(B.Batch) < 10
WHERE N.Year = '' AND N.Series IN ('JV', 'AR', 'CR')
GROUP BY N.Series, N.LastNo
HAVING MAX(CAST(B.Batch AS int)) > N.LastNo
ORDER BY N.Series;
