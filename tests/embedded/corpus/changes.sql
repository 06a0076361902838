-- What the screens change without a procedure.
DELETE ADVANCES
GO
DELETE ADVANCES WHERE Voucher = 'AP-000981'
GO
DELETE BANKRECONDT WHERE PERIOD = '202403' AND GLBANK = '1102'
GO
DELETE FROM ARDT WHERE Batch = 'JV-202403-0007'
GO
DELETE FROM MODESOFPAYMENT WHERE PaymentID = 'X-17'
GO
DELETE FROM billing..tbCashDepositSlips WHERE DepositDate = '03/31/2024'
GO
DELETE PRINT_2307 WHERE BatchKey = 'X-17'
GO
Delete APCDB where CVNo = 'JV-202403-0007' and CVSeries = 'JV'
GO
Delete APCDB where CVNo = 'CV-000123'
GO
Delete APOTHERS where Voucher = 'AP-000981'
GO
Delete APWTAX where VOUCHER = 'AP-000981'
GO
Delete Access where UserID = '0042'
GO
Delete BegBalDT where Year = '2024' and Acct = '2101'
GO
Delete CDBDT where CVNo = 'CV-000123'
GO
Delete CheckOR where CVNo = 'CV-000123' and CheckNo = '0004512' and BankID = 3
GO
Delete Invoice where APVoucher = 'AP-000981'
GO
Delete VAT where Voucher = 'AP-000981'
GO
Delete apdt
GO
Delete apdt where Voucher = 'AP-000981'
GO
Delete from JVDT where Batch = 'JV-202403-0007'
GO
Delete from APType where Code = '1101'
GO
Delete from CRBDT where Batch = 'JV-202403-0007'
GO
Delete from GLGROUP where GLGroup = '15'
GO
Delete from Periods where Period = '202403'
GO
Delete from Periods where Period = '15'
GO
Delete from Vend where VendorID = '1101'
GO
Delete from WTax where CVNO = 'CV-000123'
GO
Delete from acctcode where code = '1101'
GO
IF NOT EXISTS ( SELECT * FROM DEPARTMENTS WHERE CODE = '1' ) BEGIN INSERT INTO DEPARTMENTS ( CODE, DEPARTMENT ) VALUES ( '1', 'ANCILLIARY SERVICES' ) END;
GO
INSERT INTO ACCESS (UserID, AccessID, CanAccess) VALUES ('0042','X-17',1)
GO
INSERT INTO ADVANCES ( CVNO, VOUCHER, AMOUNT, SEQNO, CODE, DOCSOURCE ) VALUES ( 'CV-000123', 'AP-000981', 1250.75, 1, '1101','X-17' )
GO
INSERT INTO CHECKS ( CheckNo, CVNo, Payee, GLBank, BankID, Amount, Period, CHKDATE, Date_Prepared, Date_Cleared, Posted ) VALUES ('0004512', '', 'Dr. Peña', '1102', 3, '1250.75', '000000', '03/31/2024', '03/31/2024', NULL, 1 )
GO
INSERT INTO VAT ( VOUCHER, ROWID, GROSS, VRATE, VAT ) VALUES ( 'AP-000981', 1,10000.00, 0.00, 0.00 )
GO
UPDATE AP SET APPROVEDDATE = GETDATE(), APPROVEDBY = '0042' WHERE VOUCHER = 'AP-000981'
GO
UPDATE AP SET POSTED = 0 WHERE VOUCHER = 'AP-000981'
GO
UPDATE AP SET POSTED = 1, POSTEDBY = '0042', POSTEDDATE = GETDATE() WHERE VOUCHER = 'AP-000981'
GO
UPDATE BANK SET CheckNo = 4513 WHERE BANKID = 3
GO
UPDATE CDB SET POSTED = 0 WHERE CVNO = 'CV-000123'
GO
UPDATE CDB SET POSTED = 1, POSTEDBY = '0042', POSTEDDATE = GETDATE() WHERE CVNO = 'CV-000123'
GO
UPDATE CDB SET VendorID = 'V0001' where CVNo = 'CV-000123'
GO
UPDATE CHECKS SET Released = 25 where CVNo = 'CV-000123' and CheckNo = '0004512' and BankID = 3
GO
UPDATE CVNUM SET CVNUM = 25 WHERE CVYear = 'X-17'
GO
UPDATE FixedAsset..tbFACAHeader set Voucher = 'AP-000981' where CANum = 'X-17' and NULLIF(Voucher, '') IS NULL
GO
UPDATE INVENTORY..tbInvRRHeader set Voucher = 'AP-000981' where NULLIF(Voucher, '') IS NULL AND RecordNumber = 25
GO
UPDATE SYS SET CVNo = 25
GO
UPDATE SYS SET CheckNo = 4513
GO
UPDATE SYS SET CreditMemo = 25
GO
UPDATE SYS SET DEBITMEMO = 'X-17'
GO
UPDATE SYS SET rptpdStart = '202403' , rptpdEnd = '202403'
GO
Update Checks set Transfer = 'A', Date_Transfer = '03/31/2024' where CheckID = 'X-17'
GO
Update Checks set transfer = null, date_transfer = Null where date_transfer = '03/31/2024' and BankID = '3'
GO
Update VEND set ACTIVE = 0 Where VendorID = '1101'
GO
Update tbAcctgLink set BatchNo = 'JV-202403-0007', Status = 'F' where BatchDate = '03/12/2024' and BatchType = 'X-17'
GO
delete BEGBALDT where Period = '202403' and BatchType = 'JV'
GO
delete BegBalance where Year = '2024' and Acct = '2101'
GO
delete INVOICE where APVoucher = 'CV-000123' and Source = 'CD'
GO
delete RevenueCode where RevenueID = 'X-17' and isnull(ItemID, '') = ''
GO
delete from bank where bankid = '3'
GO
delete from billing..tbCashDepositCOH where depdate = '03/31/2024'
GO
delete from cstctr where cstctr = '15'
GO
delete from revctr where revctr = '15'
GO
insert into BEGBALDT (Year, Period, BatchType, Acct, Dept, Debit, Credit) values ('2024','202403','JV','2101','010',1250.75,0)
GO
insert into BegBalDT ( Year, Acct, Period, BatchType, Debit, Credit ) values ( '2024', '2101', '202403', 'X-17', 1250.75, 0)
GO
insert into BegBalance (Year, Acct, Code, Debit, Credit) values ('2024', '2101', '2101', 1250.75, 0 )
GO
insert into INVOICE ( apVoucher, Invoice, RR, PO, InvDate, Amount, Period, VendorID, SeqNo ) values ( 'AP-000981','X-17', 'X-17', 'X-17', '03/05/2024', 1250.75, '202403', 'V0001', 1)
GO
truncate table TempOutstanding
GO
truncate table payroll_payableName
GO
update Periods set APVoucher = 25 Where Period = '202403'
GO
update SYS set APPeriod = '202403'
GO
update SYS set CDBPeriod = '202403'
GO
update SYS set GLPeriod = '202403'
GO
update checks set DATE_CLEARED = '03/31/2024' where CHECKNO = '0004512'  and BankID = '3'
GO
update checks set transfer = 'A'
GO
update checks set transfer = 'A' where checkno = '0004512'
GO
update inventory..tbinvrrheader set voucher = 'AP-000981' where recordnumber = 'X-17'
GO
update sys set PFV = 'X-17'
GO
update sys set Voucher = 'AP-000981'
GO
update sys set Voucher = 'X-17'
GO
