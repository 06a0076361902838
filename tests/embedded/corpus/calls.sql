-- Procedure calls of the screens: the name alone starts the batch.
spCash_DepositCOH_ByDate '03/31/2024'
GO
spCash_DepositSlips_ByDate '03/31/2024'
GO
spCash_Update_DepositCOH_Batch '03/05/2024','X-17',25,25,25,25,'03/04/2024'
GO
spCash_Update_DepositSlip_Batch 'X-17',1250.75,'03/05/2024','1101','0042','X-17','03/04/2024',25,'03/04/2024'
GO
spLoad_VATMonthly '0042','202403',''
GO
spLoad_VATQuarterly '0042', 25, 2024, ''
GO
spReport_VAT '0042'
GO
sp_APVCancel 'AP-000981'
GO
sp_BSLYTotals
GO
sp_BSTotals
GO
sp_BankDeposit_Upload '03/31/2024'
GO
sp_COSUpload '03/31/2024'
GO
sp_CancelCheck '0004512', 'CV-000123', 'X-17', '1250.75', '0042', 'X-17'
GO
sp_CancelChkVoucher 'CV-000123'
GO
sp_CheckUpload
GO
sp_CheckUploadInv_StockIssuance_Daily '03/31/2024','03/31/2024'
GO
sp_CheckUploadPayroll
GO
sp_CheckUpload_COS '03/31/2024'
GO
sp_CheckUpload_Depreciation
GO
sp_CheckUpload_Discharged
GO
sp_CheckUpload_WD
GO
sp_CheckUser '0042'
GO
sp_Check_VendSupplier 'X-17'
GO
sp_Check_VendSupplier_FA 'X-17'
GO
sp_ClearTransaction 'X-17', 'X-17', '1', '03/28/2024'
GO
sp_CollectionUpload '03/31/2024','X-17'
GO
sp_DepreciationUpload '202403'
GO
sp_DischargedUpload '03/31/2024'
GO
sp_DischargesUpload_IncompleteData
GO
sp_ExportReport '12','03/31/2024','0042'
GO
sp_ExportReport 'X-17','03/31/2024','0042'
GO
sp_Export_ARCR '12','03/31/2024','0042'
GO
sp_Export_ARCR 'X-17','03/31/2024','0042'
GO
sp_Filter_Inv_Amount 'X-17','X-17','X-17'
GO
sp_Filter_Inv_Amount 'X-17','X-17','RS'
GO
sp_Filter_Inv_Amount_ByClassification
GO
sp_Filter_Inv_RR_Ver2 'Medical'
GO
sp_Filter_Inv_RR_Ver3 'X-17'
GO
sp_Filter_Inv_RR_Ver3 'X-17','RS'
GO
sp_GetAPVPaid 'AP-000981'
GO
sp_GetFixedAssetDeliveriesForApBySupplier 'X-17'
GO
sp_GetFixedAssetRrDetails 'X-17'
GO
sp_GetOutCheck '', '03/31/2024','4','','3'
GO
sp_GetOutCheck 'X-17', '03/31/2024','X-17','','3'
GO
sp_IncomeUpload '03/31/2024','03/31/2024','X-17'
GO
sp_Init_APCDB 'JV-202403-0007','JV'
GO
sp_Init_APCDB 'JV-202403-0007','202403'
GO
sp_Init_BatchNumbers '202403','', 'JV'
GO
sp_Init_BegBalance '2024',''
GO
sp_Init_PFV_Details 'X-17'
GO
sp_Init_PFVoucherDetails '03/31/2024','Y'
GO
sp_Init_PFVoucherDetails_PHIC '03/01/2024','03/31/2024'
GO
sp_Init_VouchersPayableBegin 'AP-000981','03/31/2024'
GO
sp_Insert_AP2 'AP-000981', 'X-17', '', '2024', '03', 'X-17'
GO
sp_Insert_APCDB 'AP-000981', 'CV-000123', 1250.75,'2101'
GO
sp_Insert_APCDB 'AP-000981', 'CV-000123', 25,'2101'
GO
sp_Insert_APCDB 'AP-000981', 'JV-202403-0007', 1250.75, '1101', 'JV', 1
GO
sp_Insert_APDT 'AP-000981', '', 'Fuel and oil', 1250.75, 0, '202403', 1, '1101', '010'
GO
sp_Insert_APDT 'AP-000981', '2101', 'Fuel and oil', 1250.75, 0, '202403', 1
GO
sp_Insert_APWTax_Ver2 'AP-000981', 'X-17', '10000.00', 'X-17', '1250.75', NULL, NULL, 1
GO
sp_Insert_AR
GO
sp_Insert_ARDT 'JV-202403-0007', '202403', '2101', '03/31/2024', 'X-17', 1250.75, 0, 25
GO
sp_Insert_BankRecon '202403', '1102', 25, 25, 25, 25, 25, 25, 25, '03/31/2024', 'X-17'
GO
sp_Insert_BankReconDT '202403', '1102', 'JV-202403-0007', 1250.75, '03/31/2024', 'Adjustment'
GO
sp_Insert_BegBalance '2024','1101',1250.75,0,''
GO
sp_Insert_CDB 'V0001', 'CV-000123', '03/15/2024', 'O''Hara refund', 1250.75, 'Dr. Peña', '202403', '0042', 3, 25, 25
GO
sp_Insert_CDB 'V0001', 'CV-000123', '03/15/2024','O''Hara refund', 1250.75, 'Dr. Peña', '202403', '0042', 3
GO
sp_Insert_CDB2 'CV-000123', 'X-17', '', '2024', '03', 'X-17'
GO
sp_Insert_CDBDT 'CV-000123', '', 'Fuel and oil', 1250.75, 0, '202403', 1, '1101', '010'
GO
sp_Insert_CDBDT 'CV-000123', 'X-17', 'Fuel and oil', 1250.75, 0, '202403', 1, '1101', '010', 'X-17'
GO
sp_Insert_CRB
GO
sp_Insert_CRBDT 'JV-202403-0007', '202403', '2101', '03/31/2024', 'X-17', 1250.75, 0, 25
GO
sp_Insert_Checks 'CV-000123', '1102', '0004512', '03/15/2024', 'Dr. Peña', 1250.75, '202403', '03/15/2024', 3, 25, '0042'
GO
sp_Insert_Invoice
GO
sp_Insert_JV
GO
sp_Insert_JV2 'JV-202403-0007', 'X-17', '', '2024', '03', 'X-17'
GO
sp_Insert_JVDT
GO
sp_Insert_PFV_Details
GO
sp_Insert_PFVoucher 'X-17','03/31/2024','0042'
GO
sp_Insert_PFVoucherDetails
GO
sp_Insert_Vend
GO
sp_Insert_Vouchers 'CV-000123', 'CD', '202403', 'X-17', '03/31/2024'
GO
sp_Insert_Vouchers 'AP-000981', 'JV', 'JV-202403-0007', '', '03/12/2024'
GO
sp_Insert_Vouchers 'AP-000981', 'JV', 'JV-202403-0007', '', NULL
GO
sp_Inv_Search_Free 'Medical'
GO
sp_List_AP_CreditsToApply 'V0001'
GO
sp_List_PendingVouchers
GO
sp_LoadDoctorsReport 'X-17','X-17','','Y'
GO
sp_LoadDoctorsReportPhic '03/01/2024','03/31/2024'
GO
sp_Load_AP 'AP-000981'
GO
sp_Load_APVendor 'AP-000981'
GO
sp_Load_AP_Others '2101','V0001'
GO
sp_Load_AP_Others 'AP-000981'
GO
sp_Load_ARCode '1101'
GO
sp_Load_Acct '1101'
GO
sp_Load_AcctVend
GO
sp_Load_AdvancesToApply 'V0001','AP-000981'
GO
sp_Load_BatchDT 'JV','JV-202403-0007'
GO
sp_Load_BegBalDT '202403','JV'
GO
sp_Load_BegBalance '2024',''
GO
sp_Load_CompanyARClass '1101'
GO
sp_Load_CompanyARCode '1101'
GO
sp_Load_Doctors
GO
sp_Load_InvClassLocation
GO
sp_Load_Invoice 'X-17'
GO
sp_Load_Invoice 'X-17','V0001'
GO
sp_Load_InvoicesByVoucher 'AP-000981'
GO
sp_Load_PFVoucherDetails 'A','X-17'
GO
sp_Load_PFVoucherDetails 'U','','X-17'
GO
sp_Load_PO 'X-17'
GO
sp_Load_PO 'X-17', 'V0001'
GO
sp_Load_RFVoucherDetails 'A','AP-000981'
GO
sp_Load_RFVoucherDetails 'U',''
GO
sp_Load_ROA_Vouchers 'Medical'
GO
sp_Load_RRDetails 'X-17','X-17'
GO
sp_Load_Suppliers
GO
sp_Load_UserAccess '0042'
GO
sp_Load_VoucherLedger 'AP-000981'
GO
sp_Load_VouchersToPay 'V0001','CV-000123'
GO
sp_Load_VouchersToPay 'V0001','CV-000123','CV','X-17'
GO
sp_Load_VouchersToPay 'V0001','03/31/2024'
GO
sp_Load_WTax 'CV-000123'
GO
sp_Maintenance_DeleteVendor 'X-17'
GO
sp_Maintenance_MergeVendors 'X-17','X-17'
GO
sp_PFBankRemittanceExport 'CV-000123'
GO
sp_PatientSearch 'X-17','X-17','X-17'
GO
sp_PatientSearch '1', 'X-17',''
GO
sp_Payroll_LoadCodes ''
GO
sp_Payroll_LoadDept 'Medical'
GO
sp_PharmacyCollectionUpload '03/31/2024','X-17'
GO
sp_PostAPtoGL '202403'
GO
sp_PostAdjustedVoucher 'AP-000981','03/31/2024','JV-202403-0007'
GO
sp_PostBegBaltoGL '202403'
GO
sp_PostCDBtoGL '202403'
GO
sp_PostForwardedBal '2024'
GO
sp_PostGLtoGL '202403','JV'
GO
sp_PostStaledCheck 'JV-202403-0007','03/28/2024','0004512','3',0042,'X-17'
GO
sp_PrepareFinance '202403'
GO
sp_Process_PFVoucherDetails
GO
sp_ReadersFeeUpload '03/31/2024'
GO
sp_ReconBookAdjustments '202403','1102'
GO
sp_ReconBookBalance
GO
sp_ReconDepositInTransit '202403','1102'
GO
sp_ReconDisbursements '202403','1102'
GO
sp_ReconOutstandingChecks '202403','1102'
GO
sp_Report_Alphalist_Monthly_FILE '01/01/2024', '03/31/2024'
GO
sp_Report_CRB_AuditJournal '03/31/2024','03/31/2024'
GO
sp_Retrieve_Form2307_CheckVoucherRange 'X-17', 'X-17', 'X-17'
GO
sp_SaveAuditLog
GO
sp_SaveUserLogs
GO
sp_Search
GO
sp_SearchAP
GO
sp_SearchCV
GO
sp_SearchChecks
GO
sp_SearchVendor
GO
sp_Search_Acct 'X-17','Medical','X-17'
GO
sp_Search_Check
GO
sp_Search_Inv_Location
GO
sp_Search_JV_ByCode '3'
GO
sp_Search_SupplierFA 'Medical', 'X-17'
GO
sp_Search_Vend 'X-17','Medical','X-17'
GO
sp_UnpostBook 'JV','202403'
GO
sp_Update_AP
GO
sp_Update_ARCode
GO
sp_Update_AcctClass
GO
sp_Update_AcctVend '1101', 'V0001'
GO
sp_Update_Bank
GO
sp_Update_BatchNumbers '202403','', 'CV','X-17'
GO
sp_Update_CSTCTRLOC
GO
sp_Update_CompanyARClass
GO
sp_Update_CstCtr
GO
sp_Update_DailyReadersFee_ForPayment 'X-17'
GO
sp_Update_Departments
GO
sp_Update_Equity
GO
sp_Update_GLGroup
GO
sp_Update_MOP
GO
sp_Update_PFVoucherDetails_Ver2
GO
sp_Update_Parameters '1101','X-17','Fuel and oil'
GO
sp_Update_Payroll_Codes_Link '1101','Fuel and oil','2101','X-17',NULL,NULL,NULL,25, 'X-17'
GO
sp_Update_RFVoucherDetails '1','AP-000981'
GO
sp_Update_RFVoucherDetails '1',NULL
GO
sp_Update_RevCtr
GO
sp_Update_Revenue_Codes_Link
GO
sp_Update_TaxAcctCode
GO
sp_Update_Terms
GO
sp_Update_Vend
GO
sp_Update_Vend_Doctor
GO
sp_Update_Vend_Supplier 'X-17','V0001'
GO
sp_Update_Vend_Supplier_FA
GO
sp_UploadReport 'X-17'
GO
sp_UploadReportDetail 'X-17'
GO
sp_UploadReport_COS '03/31/2024'
GO
sp_Upload_Inv_StockIssuance_Daily '03/31/2024','X-17'
GO
sp_Upload_Inv_StockIssuance_Daily '03/31/2024','X-17','N'
GO
sp_Upload_Inv_StockIssuance_Daily '03/31/2024','X-17','Y'
GO
sp_VerifyAcct '1101'
GO
sp_VerifyGLGroup '15'
GO
sp_VerifyVendorID '1101'
GO
sp_YearEndClose 'X-17','X-17'
GO
sp_payroll_Upload '03/31/2024'
GO
