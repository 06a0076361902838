-- Purpose: Vendors with their display name: the company, or the person's names where there is none.
-- Called by: vendor lists and searches.
-- Returns: every column of VEND, and Vendor (the display name)
CREATE OR ALTER VIEW dbo.vwVENDOR
AS
SELECT
    V.VendorID, V.Company, V.Addr1, V.Addr2, V.Phone, V.VAT, V.City, V.PROV, V.ZIP, V.TIN, V.Contact, V.ACCT, V.Fax, V.Class, V.WTax,
    V.LastName, V.FirstName, V.MiddleName, V.APType, V.APTerm, V.WTXRate, V.VatRate, V.INRate, V.ATC, V.Active,
    CASE
        WHEN ISNULL(V.Company, '') <> '' THEN V.Company
        ELSE ISNULL(V.LastName, '') + ', ' + ISNULL(V.FirstName, '') + RTRIM(' ' + ISNULL(V.MiddleName, ''))
    END AS Vendor
FROM dbo.VEND AS V;
