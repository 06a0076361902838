-- Purpose: What was done to documents on a range of days.
-- Called by: the audit trail report.
-- Parameters:
--   @Date1  first day
--   @Date2  last day
-- Returns: LogID, LogDate, UserID, UserName, Book, Reference, Extra, LogText; in the order of the log
CREATE OR ALTER PROCEDURE dbo.sp_Report_AuditTrail
    @Date1 datetime,
    @Date2 datetime
AS
BEGIN
    SET NOCOUNT ON;

    SELECT
        L.LogID, L.LogDate, L.UserID, RTRIM(ISNULL(E.FirstName, '') + ' ' + ISNULL(E.LastName, '')) AS UserName, L.Book, L.Reference,
        L.Extra, L.LogText
    FROM dbo.AuditLog AS L
    LEFT JOIN PASSWORD.dbo.tbPasswordMain AS E ON E.EmployeeID = L.UserID
    WHERE L.LogDate >= @Date1 AND L.LogDate < DATEADD(DAY, 1, @Date2)
    ORDER BY L.LogID;
END;
