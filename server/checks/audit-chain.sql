-- Title: The audit log is unbroken
-- Explanation: Each row of the audit log carries a hash over itself and the row before, and the end of the log is kept apart. A row
--   listed here was changed, follows a row that is missing, stands behind the end, or is the end while later rows were cut off.
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
SELECT H.LastID AS LogID, L.LogDate, ISNULL(L.UserID, '') AS UserID, ISNULL(L.Book, '') AS Book,
    ISNULL(L.Reference, '') AS Reference, ISNULL(L.LogText, '') AS LogText,
    CASE WHEN L.LogID IS NULL THEN 'Rows at the end are missing' ELSE 'Is not the row that was written last' END AS Fault
FROM dbo.AuditHead AS H
LEFT JOIN dbo.AuditLog AS L ON L.LogID = H.LastID
WHERE H.LastHash <> ISNULL(L.Hash, '')
UNION ALL
SELECT A.LogID, A.LogDate, A.UserID, A.Book, A.Reference, A.LogText, 'Stands behind the end of the log' AS Fault
FROM dbo.AuditLog AS A
WHERE A.LogID > ISNULL((SELECT MAX(H.LastID) FROM dbo.AuditHead AS H), 0)
ORDER BY LogID;
