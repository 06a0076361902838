-- What the screens read.
SELECT  SUPPLIERNAME,SUPPLIERID FROM INVENTORY..tbInvSupplier where suppliername like 'Medical%'
GO
SELECT * FROM AR WHERE REPORTDATE = '03/31/2024' AND REPORTTYPE = 'IP'
GO
SELECT * FROM CHECKS WHERE CVNO = 'CV-000123'
GO
SELECT * FROM CRB WHERE REPORTDATE = '03/31/2024'
GO
SELECT * FROM INVENTORY..tbInvRRHeader where RecordNumber = 25
GO
SELECT * FROM JV WHERE BATCH = 'JV-202403-0007'
GO
SELECT * FROM RevenueCode WHERE RevenueID = 'X-17'
GO
SELECT * FROM Sys
GO
SELECT * FROM VENDSUPPLIER WHERE SupplierID = 'X-17'
GO
SELECT * FROM VENDSUPPLIERFA WHERE SupplierID = 'X-17'
GO
SELECT * FROM dbo.fn_BankTransactions('1102') A WHERE (A.Date_Cleared IS NULL OR A.Date_Cleared >= '03/31/2024') AND A.DocSource <> 'CHECK' ORDER BY DocDate
GO
SELECT * FROM dbo.fn_BankTransactions('1102') A WHERE DocDate <= '03/31/2024' AND (A.Date_Cleared IS NULL OR A.Date_Cleared >= '03/01/2024') ORDER BY DocDate
GO
SELECT * from  AP where Voucher = 'Medical'
GO
SELECT * from Invoice where APVoucher = 'AP-000981' order by SeqNo
GO
SELECT *, CONVERT(VARCHAR, TransDate, 126) as OriginalTransDate from AP where Voucher = 'Medical'
GO
SELECT *, UniqueKey = NEWID() FROM APCDB WHERE APVOUCHER = 'AP-000981'
GO
SELECT *, UniqueKey = NEWID() FROM INVOICE WHERE VendorID = 'V0001' AND INVOICE LIKE '%Medical%'
GO
SELECT *, UnitCost = ListCost, Item = ItemName + ' ' + ItemDesc FROM vwRRDetails WHERE RecordNumber = 'X-17'
GO
SELECT 1 FROM INFORMATION_SCHEMA.COLUMNS WHERE TABLE_NAME = 'X-17' AND COLUMN_NAME = 'X-17'
GO
SELECT ACCT FROM BANK WHERE BANKID = 3
GO
SELECT ACCT as AccountCode,DESCRIPTION as Description,Debit,Credit,Voucher from APDT where Voucher = 'AP-000981'
GO
SELECT ACCT as AccountCode,DESCRIPTION as Description,Debit,Credit,Voucher from APDT where Voucher = 'AP-000981' order by SeqNo Desc
GO
SELECT ACCT as AccountCode,DESCRIPTION as Description,Debit,Credit,Voucher from JVDT where BATCH = 'JV-202403-0007' order by SeqNo
GO
SELECT AP.*, ISNULL((SELECT COUNT(CODE) FROM APDT WHERE VOUCHER = AP.VOUCHER), '') as IsUsed FROM AP WHERE Voucher = 'Medical'
GO
SELECT C.CheckID, C.GLBank, C.CheckNo, C.ChkDate, C.Payee, C.Amount, B.BankID, B.Description, B.Acct from CHECKS as C left join BANK as B on C.BankID = B.BankID where C.CVNO = 'CV-000123' and C.Cancelled = 0
GO
SELECT CODE as AccountCode, DESCRIPTION as Description, Debit, Credit, Voucher from APDT where Voucher = 'AP-000981' order by SeqNo
GO
SELECT CODE, DEPT, DESCRIPTION as Description, Debit, Credit from JVDT where Batch = 'JV-202403-0007' order by SeqNo
GO
SELECT CODE, DEPT, DESCRIPTION as Description,Debit,Credit  from CDBDT  where CVNo = 'CV-000123' order by SeqNo
GO
SELECT CODE, DEPT, DESCRIPTION as Description,Debit,Credit from CDBDT where CVNo = 'CV-000123' order by SeqNo
GO
SELECT COUNT(*) AS APCount FROM AP WHERE Voucher = 'AP-000981'
GO
SELECT COUNT(*) AS AcctCodeCount FROM AcctCode WHERE Code = '1101'
GO
SELECT COUNT(*) AS BankCount FROM BUILD_FILE..tbCoBank WHERE BankID = '1101'
GO
SELECT COUNT(*) AS BankReconCount FROM BANKRECON WHERE GLBank = '1102'
GO
SELECT COUNT(*) AS BegBalCount FROM BEGBALANCE WHERE YEAR = '2024'
GO
SELECT COUNT(*) AS CDBCount FROM CDB WHERE CVNo  = 'X-17'
GO
SELECT COUNT(*) AS CDBCount FROM CDB WHERE CVNo  = 'CV-000123'
GO
SELECT COUNT(*) AS CheckCount FROM CHECKS WHERE CVNO = 'CV-000123'
GO
SELECT COUNT(*) AS CheckCount FROM JV WHERE Batch = 'JV-202403-0007'
GO
SELECT COUNT(*) AS DoctorCodeCount FROM VENDDOCTOR WHERE DoctorID= 'X-17'
GO
SELECT COUNT(*) AS PFVCount FROM PFVoucherDetails WHERE SEQNO = '1'
GO
SELECT COUNT(*) AS PayableCount FROM APTYPE WHERE Code = '1101'
GO
SELECT COUNT(*) AS SupplierCodeCount FROM VENDSUPPLIER WHERE SupplierID= 'X-17'
GO
SELECT COUNT(*) AS TaxAcctCodeCount FROM WTaxCode WHERE TaxCode= '1101'
GO
SELECT COUNT(*) AS UserSettCount FROM ACCESS WHERE UserID = '0042'
GO
SELECT COUNT(*) AS VoucherCount FROM AP WHERE Voucher = 'AP-000981'
GO
SELECT COUNT(*) AS VoucherCount FROM VouchersPayableBegin WHERE Voucher = 'AP-000981'
GO
SELECT COUNT(*) AS TermsCount FROM Terms WHERE TermsID = '15'
GO
SELECT Cancelled, VendorID AS VendorID, Voucher AS VoucherNo, VoucherDate AS VDate, DueDate, Particular AS Description, Amount, Payee, Terms, Posted, Period, TermsID, APType, ApprovedDate, PrintVoucher FROM vwAP AS AP WHERE PrintVoucher = 'Medical'
GO
SELECT CashAcct as Code FROM RevenueCode WHERE RevenueID = 'MD'
GO
SELECT Code, Dept, DESCRIPTION as Description, Debit, Credit, Voucher from APDT where Voucher = 'AP-000981' order by SeqNo
GO
SELECT Code, Dept, DESCRIPTION as Description, Debit, Credit, Voucher, IsTax = CASE WHEN A.CODE IN (SELECT WTAX FROM SYS UNION SELECT DISTINCT GLCODE FROM WTAXCODE WHERE GLCODE IS NOT NULL) AND A.CREDIT > 0 THEN 1 ELSE 0 END FROM APDT A where Voucher = 'AP-000981' order by SeqNo
GO
SELECT DISTINCT IDNum FROM tbDailyReadersFee Where IsNull(IsCash, 0) = 0 OR ISNULL(IsPHIC, 0) = 0 OR ISNULL(IsHospital, 0) = 0
GO
SELECT Date_Adjusted, BATCH, Cancelled,VENDORID as VendorID,VOUCHER as VoucherNo,VoucherDATE AS VDate,PARTICULAR as Description,Amount,Payee,Posted,Period,DueDate,Terms from AP where Voucher = 'AP-000981'
GO
SELECT Date_Adjusted, Cancelled, VENDORID as VendorID,VOUCHER as VoucherNo, VoucherDATE AS VDate,PARTICULAR as Description,Amount,Payee,Posted,Period,DueDate,Terms from AP where BATCH = 'JV-202403-0007'
GO
SELECT GLCODE FROM WTAXCODE WHERE GLCODE = '1101'
GO
SELECT ISNULL(CODE, '') as AccountCode, ISNULL(DESCRIPTION, '') as Description, ISNULL(Debit, 0) AS Debit, ISNULL(Credit, '') AS Credit, Voucher from APDT where Voucher = 'AP-000981' order by SeqNo
GO
SELECT Invoice,PO,RR,InvDate,Amount from Invoice where APVoucher = 'AP-000981' order by SeqNo
GO
SELECT MAX(BankID) AS LastID FROM ACCOUNTING..BANK
GO
SELECT Posted FROM AR WHERE BatchDate = '03/31/2024' AND BatchType = 'X-17'
GO
SELECT TOP 1 * from Invoice where APVoucher = 'AP-000981' order by SeqNo
GO
SELECT TOP 1 BATCH FROM AR ORDER BY TransDate DESC, BATCHDATE DESC
GO
SELECT TOP 5000 A.BATCH , A.BATCHDATE, A.PARTICULAR, ISNULL(NULLIF(B.PrintJVBatch, ''), A.BATCH ) AS DisplayBatch FROM JV A LEFT JOIN JV2 B ON A.BATCH = B.BATCH WHERE A.POSTED = 0 AND ISNULL(A.CANCELLED, 0) = 0 AND A.BATCHTYPE IN ('JV','YE') ORDER BY A.BATCHDATE , A.BATCH
GO
SELECT TOP 5000 A.VOUCHER, A.VOUCHERDATE, A.PAYEE, A.AMOUNT, A.PARTICULAR, dbo.fn_GetDisplayVoucher(A.Voucher) AS DisplayVoucher, A.FromRR FROM AP A WHERE A.POSTED = 0 AND A.PERIOD = '202403' AND A.CANCELLED = 0 ORDER BY A.VOUCHERDATE DESC, A.VOUCHER DESC
GO
SELECT WTAX as Code FROM SYS
GO
SELECT dbo.fn_APSuppliersParticulars_FA_Ver1('X-17','') as Particulars FROM SYS
GO
SELECT dbo.fn_APSuppliersParticulars_Ver1('X-17','') as Particulars FROM SYS
GO
SELECT isnull(Voucher,'') as Voucher, isnull(A.TaxCode,'') as TaxCode, isnull(B.TaxDesc,'') as TaxDesc, isnull(Gross,0) as Gross, isnull(TaxRate,0) as TaxRate, isnull(Amount,0) as Amount, isnull(SSS,0) as SSS, isnull(Medicare,0) as Medicare FROM APWTax A Left Outer Join WTaxCODE B on A.TaxCode = B.TaxCode where A.Voucher = 'AP-000981'
GO
Select * from CRB where Batch = 'Medical'
GO
Select * from AP where Voucher = 'AP-000981'
GO
Select * from AP where Voucher = 'Medical'
GO
Select * from AP2 where PrintVoucher = 'Medical'
GO
Select * from APCDB where CVNo = 'CV-000123'
GO
Select * from AcctCode where Code = '1101'
GO
Select * from AcctCode where Code = '1101' AND TYPE IN ('IN','EX')
GO
Select * from BANK where BankID = '3'
GO
Select * from BUILD_FILE..tbCoBank where BankID = '1101'
GO
Select * from CDB where CVNO = 'CV-000123'
GO
Select * from CDB where CVNO = 'Medical'
GO
Select * from Checks where CheckNo = '0004512'
GO
Select * from Checks where CheckNo = '0004512' and BankID = 3 and Cancelled = 0
GO
Select * from Checks where CheckNo = '0004512' and CVNo = 'CV-000123'
GO
Select * from Checks where CheckNo = 'Medical'
GO
Select * from Checks where Checkno = '0004512' and BankID = 3
GO
Select * from ChecksAll where Checkno = '0004512' and BankID = '3'
GO
Select * from ChecksAll where Checkno = '0004512' and CVNo = 'CV-000123'
GO
Select * from FiscalYears where FiscalYear = 'X-17'
GO
Select * from JV2 where PrintJVBatch = 'Medical'
GO
Select * from PERIODS where PERIOD = '202403'
GO
Select * from VEND where COMPANY like '%UREAU%INTERNAL%REV%'
GO
Select * from apdt where Voucher = 'AP-000981'
GO
Select *, DBO.fn_GetDisplayCVNo(CVNO) as DisplayCVNo from ChecksAll where CheckNo = '0004512' and BankID = 3
GO
Select BankID, Description, Acct, Status from BANK order by BankID
GO
Select BankID, Description, Acct, Status from BUILD_FILE..tbCoBank order by BankID
GO
Select Batch, Particular, BatchDate, Posted from JV where Batch = 'JV-202403-0007'
GO
Select CVNo from sys
GO
Select CVNo, Particular, CVAmt, CVDate, Payee, Posted, Cancelled, VendorID from CDB where CVNO = 'CV-000123'
GO
Select CheckNo from Checks where CheckNo = '0004512' and BankID = 3
GO
Select CheckNo from sys
GO
Select ClassCode, Description from VendClass order by ClassCode
GO
Select Code,Description,Status,VATClass, AcctCode,APAcct,ITxAcctCode,DisAcctCode from APTYPE order by CAST(Code as int)
GO
Select Company from Vend where VendorId = 'V0001'
GO
Select Description from APType where Code = '1101'
GO
Select FiscalYear as [Year],StartDate as [Start Date],EndDate as [End Date] from FiscalYears order by StartDate
GO
Select GLGroup from AcctCode where CODE = '1101'
GO
Select Period from Periods where Period = '202403'
GO
Select Period from Periods where Period = '15'
GO
Select ROUND ( ( Sum( TotalNetCost ) + 0.001 ), 2 ) As RRTotal From INVENTORY..tbInvRRDetails Where RecordNumber = 'X-17'
GO
Select TaxCode from WTaxCode where TaxCode = '1101'
GO
Select Terms from Terms where TermsID = 'X-17'
GO
Select VendorID from VEND where VendorID = '1101'
GO
Select VendorID, Company from Vend where VendorID = 'X-17'
GO
Select VendorID, Vendor [Company], Addr1, Addr2, Phone, Active, LastName, FirstName, MiddleName from vwVENDOR order by Company
GO
Select Voucher from AP where period = '202403'
GO
Select max(cast(voucher as integer)) as NextVoucher from ap where period = '202403'
GO
select * from ACCESSTYPES order by Sequence
GO
select * from ACCOUNTING..PARAMETERS where (Client = 'X-17' OR ISNULL(Client, '') = '')
GO
select * from AP where Voucher = 'AP-000981' and Cancelled = 0
GO
select * from AP2 where PrintVoucher = 'X-17'
GO
select * from AP2 where Voucher = 'AP-000981'
GO
select * from APTYPE where Code = 'X-17'
GO
select * from APTYPE where Status = 'A' order by Description
GO
select * from APTYPE where Status = 'A' order by Description, Code
GO
select * from AR WHERE Batch = 'JV-202403-0007' order by batch
GO
select * from BANK where BankID = 3
GO
select * from BANKRECON where Period = '202403' and GLBank = '1102'
GO
select * from BUILD_FILE..tbCoARCode where ARCODE = '1101'
GO
select * from CDB2 where CVNo = 'CV-000123'
GO
select * from CDB2 where PrintCVNo = 'Medical'
GO
select * from CHECKS where BankID = 3 and CheckNo = '0004512'
GO
select * from CHECKS where CVNo = 'CV-000123' and Cancelled = 0
GO
select * from CRB WHERE Batch = 'JV-202403-0007' order by batch
GO
select * from CSTCTRLOCATION where LocationID = 'X-17'
GO
select * from INVENTORY..tbInvLocation where LocationID = 'X-17'
GO
select * from INVENTORY..tbInvRRHeader where RecordNumber = 'X-17'
GO
select * from INVENTORY..tbInvRRHeader where SupplierID = 'X-17' and TransNum = 'X-17' and CorrectionEntry = 0 and Voucher is not null order by TransDate desc
GO
select * from INVENTORY..tbInvSupplier where SupplierID = 'X-17'
GO
select * from INVOICE where APVoucher = 'CV-000123' and Source = 'CD' order by Seqno
GO
select * from JV2 where Batch = 'JV-202403-0007'
GO
select * from PFVoucher where PFVoucher = 'X-17'
GO
select * from PFVoucher where PFVoucher = 'AP-000981'
GO
select * from TERMS where Status = 'A'
GO
select * from TERMS where TermsID = 'X-17'
GO
select * from VEND where VENDORID = 'V0001'
GO
select * from VouchersPayable where Voucher = 'AP-000981' and ReportDate <= '03/31/2024' and Source <> 'BB' order by ReportDate
GO
select * from WTAXCODE where TAXCODE IN ('WI 150','WI 151') and TAXPERCENT = 'X-17'
GO
select * from payroll_payableName
GO
select * from sys.all_objects where name = 'X-17'
GO
select * from sys.all_objects where name = 'sp_Retrieve_Form2307_APVoucher_Range'
GO
select * from tbATC where ATC = 'Medical'
GO
select * from tbBIRRegistration
GO
select * from tbCashPrincipalOR where PrincipalOR = 'X-17'
GO
select * from Terms where TermsID = 'Medical'
GO
select *, case when Credit > 0 then 1 else 2 end as SortOrder from CDBDT where CVNO = 'CV-000123' order by SortOrder, SeqNo desc
GO
select *, dbo.fn_GetLastIssuedCheck(BankID) as LastIssuedCheck from BANK where BankID = '3'
GO
select A.*, P.TermsID, V.VendorID, V.ATC, S.SupplierName from FIXEDASSET..tbFACAHeader A left join FIXEDASSET..tbFAPOHeader P on A.PONum = P.PONum left join FIXEDASSET..tbFASupplier S on A.SupplierID = S.SupplierID left join VENDSUPPLIERFA Vx on A.SupplierID = Vx.SupplierID left join VEND V on V.VENDORID = Vx.VendorID where A.CANum = 'X-17'
GO
select A.*, S.SupplierName from FIXEDASSET..tbFACAHeader A left join FixedAsset..tbFASupplier S on A.SupplierID = S.SupplierID where A.CANum = 'X-17'
GO
select Count(*) RecCount from BANK where Description like 'Medical%'
GO
select Count(*) RecCount from INVENTORY..tbInvSupplier where SupplierName like 'Medical%'
GO
select Count(*) RecCount from WTaxCode where TaxDesc like '%Medical%'
GO
select Count(*) RecCount from tbATC where Description like 'Medical%'
GO
select Count(*) RecCount from Terms where Description like '25%'
GO
select D.*  from VENDDOCTOR V inner join BUILD_FILE..tbCoDoctor D on V.DoctorID = D.DoctorID where D.Status = 'A' and V.VendorID = 'V0001'
GO
select D.*  from VENDSUPPLIER V inner join INVENTORY..tbInvSupplier D on V.SupplierID = D.SupplierID where D.Status = 'A' and V.VendorID = 'V0001'
GO
select Description [Account Title], Code, Type from acctcode where mast_dept = 'MAS' and description like 'Medical%'
GO
select Description, ATC as [Code]  from tbATC where Description like 'Medical%' and Status = 'A' order by Description
GO
select Description, BankID [Code]  from BANK where Description like 'Medical%' and Status = 'A' order by Description
GO
select Description, 15 [Code]  from Terms where Description like '##%' order by Description
GO
select H.* from INVENTORY..tbInvRRHeader H where RecordNumber = 'X-17'
GO
select PrintVoucher from AP2 where Voucher = 'AP-000981'
GO
select RecordNumber from INVENTORY..tbInvRRHeader  where SupplierID = 'X-17' and TransNum = 'X-17' and Status = 'P' and Voucher is null and PU_ID = 3
GO
select S.SupplierName as Supplier, S.SupplierID as Code, S.Status from INVENTORY..tbInvSupplier S  where SupplierID not in ( select SupplierID from VENDSUPPLIER where VendorID <> '' )
GO
select S.SupplierName as Supplier, S.SupplierID as Code, S.Status from VENDSUPPLIER V left join INVENTORY..tbInvSupplier S on V.SupplierID = S.SupplierID where VendorID = 'V0001'
GO
select SupplierID, SupplierName from INVENTORY..tbInvSupplier where SupplierID = 'Medical'
GO
select SupplierName [Description], SupplierID [Code]  from INVENTORY..tbInvSupplier where SupplierName like 'Medical%' order by SupplierName
GO
select Taxcode, TaxDesc, TaxPercent , GLCode from WTaxCode order by SUBSTRING(TaxCode, 4, 10), TaxDesc
GO
select Voucher = dbo.fn_GetDisplayVoucher('AP-000981') from sys
GO
select a.* from bankrecondt a where A.period = '202403' and A.glbank = '1102'
GO
select ap.*, ap2.PrintVoucher, ap2.Division, ap2.APYear, ap2.APMonth, ap2.APSeries, CONVERT(VARCHAR, TransDate, 126) as OriginalTransDate from ap left join ap2 on ap.Voucher = ap2.Voucher where ap2.PrintVoucher = 'Medical'
GO
select count(*) recnum from checks where bankid = '3'
GO
select dbo.fn_AccountTitle( '1101','010') as Description from [SYS]
GO
select dbo.fn_NewARNum() as Voucher from sys
GO
select dbo.fn_NewCRBNum() as Voucher from sys
GO
select dbo.fn_NewCVNum('X-17') as Voucher from sys
GO
select dbo.fn_NewDMNum() as Voucher from sys
GO
select dbo.fn_NewJVNum() as Voucher from sys
GO
select dbo.fn_NewSeriesNum('JV', '', '2024', '03') as Voucher from sys
GO
select dbo.fn_NextPFVoucher() as Voucher from sys
GO
select distinct (TaxPERCENT)AS PERCENTAGE from WTaxCODE ORDER BY TaxPERCENT
GO
select getdate() [ServerDate] from patient_data..tbhospitalinfo
GO
select isnull(Description,'') Description from cstctr where cstctr = '1101'
GO
select location from inventory..tbinvlocation where locationid = 'X-17'
GO
select sum(isnull(Debit, 0) - isnull(Credit, 0)) Amount from CDBDT where CVNo = 'CV-000123' and Code = '1101'
GO
select top 1 * from GL where BatchType = 'JV' and Period = '202403'
GO
select top 1 * from GL where Period = '202403' and BatchType = 'JV'
GO
select top 1 * from PASSWORD..tbPasswordMain where EmployeeID = '1101'
GO
select top 1 * from ap where Voucher like 'CM%' ORDER BY VOUCHERDATE DESC
GO
select top 1 Voucher From AP where VOUCHER not like 'CM%' order by TRANSDATE DESC
GO
