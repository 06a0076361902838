#pragma once
// Gallery: forms that show every control there is, for pictures and for the measurements of opening.

#include "platform/forms/Application.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/forms/Lists.h"

namespace kv::gallery {

/// A dialog with one control of each kind.
class frmControls : public Form {
public:
    frmControls();

private:
    Label lblHeading{*this, "lblHeading", "Every control"};
    Label lblHint{*this, "lblHint", "What a clerk may meet on a screen, in one place."};
    TextBox txtVendorID{*this, "txtVendorID"};
    CommandButton cmdVendor{*this, "cmdVendor", "...", ""};
    Label lblVendor{*this, "lblVendor", "METRO MEDICAL SUPPLY CORPORATION"};
    TextBox txtInvoice{*this, "txtInvoice"};
    TextBox txtAmount{*this, "txtAmount"};
    DatePicker dtpDate{*this, "dtpDate"};
    DatePicker dtpPeriod{*this, "dtpPeriod", "MMMM yyyy"};
    ComboBox cboType{*this, "cboType"};
    ComboBox cboTerms{*this, "cboTerms", true};
    ComboBox cboLocked{*this, "cboLocked"};
    TextBox txtLocked{*this, "txtLocked"};
    TextBox txtOff{*this, "txtOff"};
    TextBox txtSecret{*this, "txtSecret"};
    TextBox txtRefused{*this, "txtRefused"};
    TextBox txtParticular{*this, "txtParticular"};
    CheckBox chkVat{*this, "chkVat", "&VAT registered"};
    CheckBox chkOff{*this, "chkOff", "Not to be changed"};
    OptionButton optCash{*this, "optCash", "Cas&h", "pay"};
    OptionButton optCheck{*this, "optCheck", "Chec&k", "pay"};
    OptionButton optCredit{*this, "optCredit", "Credit memo", "pay"};
    TabStrip tabPages{*this, "tabPages"};
    ListView lvwVoucher{*this, "lvwVoucher"};
    TreeView tvwChart{*this, "tvwChart"};
    RichText rtfNotes{*this, "rtfNotes"};
    ProgressBar prgWork{*this, "prgWork"};
    Label lblDebit{*this, "lblDebit", "1,250,400.00"};
    Label lblCredit{*this, "lblCredit", "1,250,300.00"};
    Label lblDifference{*this, "lblDifference", "100.00"};
    CommandButton cmdPrint{*this, "cmdPrint", "&Print", "document-print"};
    CommandButton cmdOff{*this, "cmdOff", "&Delete", "edit-delete"};
    CommandButton cmdSave{*this, "cmdSave", "&Save", "document-save"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};
};

/// An entry screen as the voucher screens are: head fields, grid, totals, buttons.
class frmVoucher : public Form {
public:
    explicit frmVoucher(Window window = Window::Dialog);
    Grid grdAccounts{*this, "grdAccounts"};

private:
    DatePicker dtpBatchDate{*this, "dtpBatchDate"};
    ComboBox cboBatchType{*this, "cboBatchType"};
    TextBox txtParticular{*this, "txtParticular"};
    TextBox txtVendorID{*this, "txtVendorID"};
    CommandButton cmdVendor{*this, "cmdVendor", "..."};
    Label lblVendor{*this, "lblVendor"};
    Label lblAccount{*this, "lblAccount"};
    Label lblTotals0{*this, "lblTotals0"};
    Label lblTotals1{*this, "lblTotals1"};
    Label lblTotals2{*this, "lblTotals2"};
    CommandButton cmdAdd{*this, "cmdAdd", "&Add Row", "list-add"};
    CommandButton cmdDelete{*this, "cmdDelete", "&Delete Row", "list-remove"};
    CommandButton cmdSave{*this, "cmdSave", "&Save Batch", "document-save"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};
};

/// A book shell as a child of the main shell: menu, toolbar, list.
class frmBook : public Form {
public:
    explicit frmBook(std::string caption);

private:
    MenuItem mnuNew{*this, "mnuNew", "&New Batch", "document-new", "Ctrl+N"};
    MenuItem mnuEdit{*this, "mnuEdit", "&Edit Batch", "document-edit", "F2"};
    MenuItem mnuPosted{*this, "mnuPosted", "Show &Posted"};
    MenuItem mnuClose{*this, "mnuClose", "&Close"};
    Toolbar tlbBook{*this, "tlbBook"};
    ListView lvwList{*this, "lvwList"};
    TextBox txtFind{*this, "txtFind"};
    Label lblTotal{*this, "lblTotal", "40 batches"};
};

/// What fills the shell's middle at first.
class frmHome : public Form {
public:
    frmHome();

private:
    Image imgLogo{*this, "imgLogo", "view-institution", 56};
    Label lblHospital{*this, "lblHospital", "San Rafael Community Hospital"};
    Label lblUser{*this, "lblUser", "Signed in as Maria Santos"};
};

class frmShell : public Form {
public:
    frmShell();
    CommandButton cmdAP{*this, "cmdAP", "Accounts &Payable", "book-ap"};
    CommandButton cmdGL{*this, "cmdGL", "General &Ledger", "book-gl"};
    StatusBar staBar{*this, "staBar"};

private:
    MenuItem mnuAP{*this, "mnuAP", "Accounts &Payable", "book-ap", "Ctrl+1"};
    MenuItem mnuGL{*this, "mnuGL", "General &Ledger", "book-gl", "Ctrl+2"};
    MenuItem mnuQuit{*this, "mnuQuit", "E&xit", "application-exit"};
    MenuItem mnuAccounts{*this, "mnuAccounts", "&Chart of Accounts"};
    CommandButton cmdCDB{*this, "cmdCDB", "Cash &Disbursements", "book-cdb"};
    CommandButton cmdCRB{*this, "cmdCRB", "Cash &Receipts", "book-crb"};
    CommandButton cmdAR{*this, "cmdAR", "&Accounts Receivable", "book-ar"};
    CommandButton cmdJV{*this, "cmdJV", "&Journal Vouchers", "book-jv"};
    CommandButton cmdHospital{*this, "cmdHospital", "&Hospital Uploads", "book-upload"};
    Label lblCompany{*this, "lblCompany", "San Rafael Community Hospital"};
};

}  // namespace kv::gallery
