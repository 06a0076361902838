-- Title: Lines of accounts with departments name one
-- Explanation: A line of an account that asks for a department must name a cost centre, and the cost centre must be on file.
SELECT L.Book, L.Period, L.Batch, L.SeqNo, L.Code, L.Dept
FROM dbo.vwBookLine AS L
LEFT JOIN dbo.AcctCode AS A ON A.Code = L.Code
LEFT JOIN dbo.CstCtr AS C ON C.CstCtr = L.Dept
WHERE (L.Dept <> '' AND C.CstCtr IS NULL) OR (L.Book IN ('JV', 'AR', 'CR') AND A.Subsidiary = 1 AND L.Dept = '')
ORDER BY L.Book, L.Period, L.Batch, L.SeqNo;
