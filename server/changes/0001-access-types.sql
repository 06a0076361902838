-- Purpose: The rights that the system asks for.
-- Check: a right that stands already is left alone.
INSERT INTO dbo.ACCESSTYPES (AccessID, Sequence, Description)
SELECT N.AccessID, N.Sequence, N.Description
FROM (
    SELECT 'AP' AS AccessID, 10 AS Sequence, 'Accounts Payable' AS Description
    UNION ALL SELECT 'CDB', 20, 'Cash Disbursement Book'
    UNION ALL SELECT 'AR', 30, 'Accounts Receivable Book'
    UNION ALL SELECT 'CRB', 40, 'Cash Receipts Book'
    UNION ALL SELECT 'JV', 50, 'Journal Vouchers Book'
    UNION ALL SELECT 'GL', 60, 'General Ledger'
    UNION ALL SELECT 'AP7', 70, 'Accounts Payable - Close Period'
    UNION ALL SELECT 'COA', 80, 'File Maintenance - Chart of Accounts'
    UNION ALL SELECT 'PER', 90, 'File Maintenance - Periods'
    UNION ALL SELECT 'CC', 100, 'File Maintenance - Cost Centers'
    UNION ALL SELECT 'VEND', 110, 'File Maintenance - Vendors'
    UNION ALL SELECT 'EQ', 120, 'File Maintenance - Equity'
    UNION ALL SELECT 'LINK3', 130, 'Hospital Links - Payroll'
    UNION ALL SELECT 'LINK7', 140, 'Hospital Links - Inventory Classification'
    UNION ALL SELECT 'HLINK', 150, 'Hospital Uploads'
    UNION ALL SELECT 'UL', 160, 'User Logs'
    UNION ALL SELECT 'ATL', 170, 'Audit Trail Logs'
) AS N
WHERE NOT EXISTS (SELECT 1 FROM dbo.ACCESSTYPES AS T WHERE T.AccessID = N.AccessID);
