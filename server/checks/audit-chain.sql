-- Title: The audit log is unbroken
-- Explanation: Each row of the audit log carries a hash over itself and the row before. A row listed here was changed, follows a row that
--   is missing, or is the last one while later rows were cut off.
SELECT A.LogID, A.LogDate, A.UserID, A.Book, A.Reference, A.LogText,
    CASE
        WHEN A.LogID > 1 AND B.LogID IS NULL THEN 'The row before is missing'
        WHEN A.PrevHash <> ISNULL(B.Hash, '') THEN 'Does not follow the row before'
        ELSE 'Was changed'
    END AS Fault
FROM dbo.AuditLog AS A
LEFT JOIN dbo.AuditLog AS B ON B.LogID = A.LogID - 1
WHERE (A.LogID > 1 AND B.LogID IS NULL) OR A.PrevHash <> ISNULL(B.Hash, '')
    OR A.Hash <> dbo.fn_AuditHash(A.PrevHash, A.LogID, A.LogDate, A.UserID, A.Book, A.Reference, A.Extra, A.LogText)
UNION ALL
SELECT H.LastID AS LogID, CAST(NULL AS datetime) AS LogDate, '' AS UserID, '' AS Book, '' AS Reference, '' AS LogText,
    'Rows at the end are missing' AS Fault
FROM dbo.AuditHead AS H
WHERE H.LastHash <> ISNULL((SELECT L.Hash FROM dbo.AuditLog AS L WHERE L.LogID = H.LastID), '')
ORDER BY LogID;
