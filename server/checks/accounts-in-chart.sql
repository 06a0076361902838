-- Title: Every line has an account that takes lines
-- Explanation: The account of a line must be in the chart and must not be a master account, which only heads others.
SELECT L.Book, L.Period, L.Batch, L.SeqNo, L.Code, A.Description
FROM dbo.vwBookLine AS L
LEFT JOIN dbo.AcctCode AS A ON A.Code = L.Code
WHERE A.Code IS NULL OR A.Mast_Dept = 'MAS'
ORDER BY L.Book, L.Period, L.Batch, L.SeqNo;
