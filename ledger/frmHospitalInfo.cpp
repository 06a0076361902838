#include "ledger/frmHospitalInfo.h"

#include <algorithm>

#include "core/Session.h"
#include "core/module1.h"
#include "ledger/LookupClass.h"
#include "ledger/clsAccount.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmSearch.h"
#include "reporting/frmSearchVend.h"

namespace kv {
namespace {

using Store = Setting::Store;

// columns of the grid
enum { kSettingCol, kCodeCol, kTitleCol };

constexpr int kName_chars = 80;
constexpr int kParameter_chars = 200;
constexpr int kMask_chars = 30;
constexpr const char* kTitle = "Korvane Accounting Program Settings";

constexpr const char* kNoHospital = "Please enter the name of the hospital.";
constexpr const char* kNoTin = "A TIN has 9 digits, or 12 to 14 with its branch.";
constexpr const char* kNoEmployee = "Employee code not found!";
constexpr const char* kNoVendor = "Vendor ID not found!";
constexpr const char* kNoNumber = "Please enter how the numbers shall look.";
constexpr const char* kLongNumber = "A number has 30 characters at most.";

}  // namespace

frmHospitalInfo::frmHospitalInfo(Session& session)
    : Form("frmHospitalInfo", "Program Settings Maintenance"), session_(session) {
    numberings_ = {
        {&optPrintVoucher0, &optPrintVoucher1, &txtPrintVoucherFormat, &txtVoucherPrefix, &txtVoucherFormat,
         &lblVoucherSample, false},
        {&optPrintCVNo0, &optPrintCVNo1, &txtPrintCVNoFormat, &txtCVPrefix, &txtCVFormat, &lblCVSample, false},
        {&optPrintJVBatch0, &optPrintJVBatch1, &txtPrintJVBatchFormat, &txtJVPrefix, &txtJVFormat, &lblJVSample, true}};
    bind();
    connect();
    initCodes();
    cmdOption0.primary();
    cmdOption0.onClick = [this] { cmdOption0_Click(); };
    cmdOption1.cancels();
    cmdOption1.onClick = [this] { Unload(); };
    shortcut("Ctrl+S", "cmdOption0_Click", [this] {
        if (validateActive()) cmdOption0_Click();
    });
    setLayout(column({expand(tabs(sstEntry, {{"&Hospital data", hospitalPage()},
                                             {"&Account codes", expand(ctlCodes)},
                                             {"&Tax registration", registrationPage()},
                                             {"&Options", optionsPage()}})),
                      buttons({cmdOption0, cmdOption1})}));
    setSize(1040, 640);
    setFirstFocus(txtHospital);
}

// ---- which control shows which setting -----------------------------------------------------------------------------

void frmHospitalInfo::bindBox(TextBox& box, Setting::Store store, std::string_view key, int page, int length) {
    box.maxLength(length);
    boxes_.push_back({&box, settingAt(store, key), page});
}

void frmHospitalInfo::bindPair(OptionButton& first, OptionButton& second, Setting::Store store, std::string_view key) {
    pairs_.push_back({&first, &second, settingAt(store, key)});
}

// clang-format off
void frmHospitalInfo::bind() {
    bindBox(txtHospital,            Store::Sys,          "Company",             kHospital, 100);
    bindBox(txtAddress,             Store::Sys,          "Address1",            kHospital, 200);
    bindBox(txtPreparedby,          Store::Sys,          "PreparedBy",          kHospital, kName_chars);
    bindBox(txtPostedby,            Store::Sys,          "PostedBy",            kHospital, kName_chars);
    bindBox(txtVerifiedby,          Store::Sys,          "VerifiedBy",          kHospital, kName_chars);
    bindBox(txtVerifiedByPosition,  Store::Parameter,    "VerifiedByPosition",  kHospital, kParameter_chars);
    bindBox(txtApprovedby,          Store::Sys,          "ApprovedBy",          kHospital, kName_chars);
    bindBox(txtApprovedByPosition,  Store::Parameter,    "ApprovedByPosition",  kHospital, kParameter_chars);
    bindBox(txtNotedBy,             Store::Parameter,    "NotedBy",             kHospital, kParameter_chars);
    bindBox(txtNotedByPosition,     Store::Parameter,    "NotedByPosition",     kHospital, kParameter_chars);
    bindBox(txtReviewedBy,          Store::Parameter,    "ReviewName",          kHospital, kParameter_chars);
    bindBox(txtReviewedByPosition,  Store::Parameter,    "ReviewedByPosition",  kHospital, kParameter_chars);
    bindBox(txtCDBClerk,            Store::Sys,          "CDBClerk",            kHospital, 15);
    bindBox(txtCDBClerkName,        Store::Sys,          "CDBClerkName",        kHospital, kName_chars);
    bindBox(txtTIN,                 Store::Registration, "TIN",                 kRegistration, 20);
    bindBox(txtRegisteredName,      Store::Registration, "RegisteredName",      kRegistration, 100);
    bindBox(txtLastName,            Store::Registration, "LastName",            kRegistration, 50);
    bindBox(txtFirstName,           Store::Registration, "FirstName",           kRegistration, 50);
    bindBox(txtMiddleName,          Store::Registration, "MiddleName",          kRegistration, 50);
    bindBox(txtTradeName,           Store::Registration, "TradeName",           kRegistration, 100);
    bindBox(txtAddress1,            Store::Registration, "Address1",            kRegistration, 150);
    bindBox(txtAddress2,            Store::Registration, "Address2",            kRegistration, 150);
    bindBox(txtZipCode,             Store::Registration, "ZipCode",             kRegistration, 10);
    bindBox(txtRDO,                 Store::Registration, "RDOCode",             kRegistration, 10);
    bindBox(txtRepresentative,      Store::Registration, "Representative",      kRegistration, 100);
    bindBox(txtRepresentativeTitle, Store::Registration, "RepresentativeTitle", kRegistration, 60);
    bindBox(txtRepresentativeTIN,   Store::Registration, "RepresentativeTIN",   kRegistration, 20);
    bindBox(txtBIRVendorID,         Store::Parameter,    "BIRVendorID",         kRegistration, 15);
    bindBox(txtPrintVoucherFormat,  Store::Parameter,    "PrintVoucherFormat",  kOptions, kMask_chars);
    bindBox(txtVoucherPrefix,       Store::Parameter,    "VoucherPrefix",       kOptions, kMask_chars);
    bindBox(txtVoucherFormat,       Store::Parameter,    "VoucherFormat",       kOptions, kMask_chars);
    bindBox(txtPrintCVNoFormat,     Store::Parameter,    "PrintCVNoFormat",     kOptions, kMask_chars);
    bindBox(txtCVPrefix,            Store::Parameter,    "CVPrefix",            kOptions, kMask_chars);
    bindBox(txtCVFormat,            Store::Parameter,    "CVFormat",            kOptions, kMask_chars);
    bindBox(txtPrintJVBatchFormat,  Store::Parameter,    "PrintJVBatchFormat",  kOptions, kMask_chars);
    bindBox(txtJVPrefix,            Store::Parameter,    "JVPrefix",            kOptions, kMask_chars);
    bindBox(txtJVFormat,            Store::Parameter,    "JVFormat",            kOptions, kMask_chars);

    bindPair(optYearType0,     optYearType1,     Store::Sys,       "YearType");
    bindPair(optPrintVoucher0, optPrintVoucher1, Store::Parameter, "UsePrintVoucher");
    bindPair(optPrintCVNo0,    optPrintCVNo1,    Store::Parameter, "UsePrintCVNo");
    bindPair(optPrintJVBatch0, optPrintJVBatch1, Store::Parameter, "UsePrintJVBatch");
    bindPair(optAPVNo0,        optAPVNo1,        Store::Sys,       "sw_APVNo");
    bindPair(optDirect0,       optDirect1,       Store::Sys,       "sw_wDirect");
    bindPair(optCompare0,      optCompare1,      Store::Sys,       "sw_Compare");
    bindPair(optCheckNo0,      optCheckNo1,      Store::Sys,       "sw_CheckNo");
    bindPair(optCV0,           optCV1,           Store::Sys,       "SW_CV");
    bindPair(optChkPrint0,     optChkPrint1,     Store::Sys,       "sw_ChkPrint");
    bindPair(optAPVPrint0,     optAPVPrint1,     Store::Sys,       "sw_APVPrint");
}
// clang-format on

// ---- rules and events ----------------------------------------------------------------------------------------------

void frmHospitalInfo::connect() {
    txtHospital.required().setHelp("As it shall stand on top of every report.");
    txtHospital.onValidate = [this](bool& cancel) {
        cancel = trimBlanks(txtHospital.text()).empty();
        if (cancel) MsgBox(kNoHospital, Icon::Exclamation);
    };
    connectSearch(txtCDBClerk, cmdCDBClerk, "Employee code. F2 searches by last name.",
                  &frmHospitalInfo::cmdCDBClerk_Click);
    txtCDBClerk.onValidate = [this](bool& cancel) { txtCDBClerk_Validate(cancel); };
    connectSearch(txtBIRVendorID, cmdBIRVendorID, "Vendor that taxes are paid to. F2 searches by name.",
                  &frmHospitalInfo::cmdBIRVendorID_Click);
    txtBIRVendorID.onValidate = [this](bool& cancel) { txtBIRVendorID_Validate(cancel); };
    for (TextBox* locked : {&txtCDBClerkName, &txtBIRVendorDesc}) locked->setLocked(true);
    for (TextBox* tin : {&txtTIN, &txtRepresentativeTIN}) {
        tin->chars("0123456789-")
            .width(20)
            .setHelp("9 digits, or 12 to 14 with the branch; dashes come by themselves.");
        tin->onValidate = [this, tin](bool& cancel) { txtTIN_Validate(*tin, cancel); };
    }
    txtZipCode.chars("0123456789").width(10);
    txtRDO.code().width(10);
    optYearType1.setHelp("Fiscal years of their own need File Maintenance > Fiscal Years.");
    for (const Numbering& numbering : numberings_) connectNumbering(numbering);
    ctlCodes.onValidateEntry = [this](bool& cancel) { ctlCodes_ValidateEntry(cancel); };
    ctlCodes.onBrowse = [this] { ctlCodes_Browse(); };
}

void frmHospitalInfo::connectSearch(TextBox& box, CommandButton& button, std::string help,
                                    void (frmHospitalInfo::*search)()) {
    box.code().width(15).setHelp(std::move(help));
    box.onKeyDown = [this, search](const std::string& key, bool& handled) {
        handled = key == "F2";
        if (handled) (this->*search)();
    };
    button.narrow().skipsTab();
    button.setCausesValidation(false);
    button.onClick = [this, search] { (this->*search)(); };
}

void frmHospitalInfo::connectNumbering(const Numbering& numbering) {
    numbering.mask->setHelp("MM, YYYY, YY: month and year; ###: the count within the month; all else stands as it is.");
    numbering.prefix->setHelp("Stands in front of the number.");
    numbering.form->setHelp("000000: the number in so many digits; MM, YYYY, YY: month and year.");
    numbering.sample->look(Label::Look::Hint);
    for (TextBox* box : {numbering.mask, numbering.prefix, numbering.form}) {
        box->width(16).chars("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789#-/._ ");
        box->onChange = [this, numbering] { showSample(numbering); };
        box->onValidate = [numbering](bool& cancel) { cancel = !numberFits(numbering); };
    }
    for (OptionButton* option : {numbering.masked, numbering.sequential}) {
        option->onClick = [this, numbering] { showSample(numbering); };
    }
}

void frmHospitalInfo::initCodes() {
    ctlCodes.FormatString("<Setting|<Code|<Title");
    ctlCodes.SetColWidth(kSettingCol, 3600);
    ctlCodes.SetColWidth(kCodeCol, 1800);
    ctlCodes.setStretchColumn(kTitleCol);
    ctlCodes.SetColumnLock(kSettingCol, true);
    ctlCodes.SetColumnLock(kTitleCol, true);
    ctlCodes.SetColumnBrowse(kCodeCol, true);
    ctlCodes.SetColumnFilter(kCodeCol, EntryFilter::UpperCase);
    ctlCodes.ValidateBlank(kCodeCol);
    ctlCodes.setHelp("Code or part of a title, Enter moves on. F2 searches.");
    const int rows = static_cast<int>(codeSettings().size());
    ctlCodes.SetRows(rows + 1);
    for (int row = 1; row <= rows; ++row) {
        const CodeSetting& code = codeSettings()[static_cast<std::size_t>(row - 1)];
        ctlCodes.SetText(row, kSettingCol, settingOf(code.store, code.key).label);
    }
    // the settings are what they are: no row opens behind the last
    ctlCodes.next = [rows](int row, int) { return row < rows ? std::pair(row + 1, int{kCodeCol}) : std::pair(-1, -1); };
    ctlCodes.pasted = [rows, paste = ctlCodes.pasted](int row, int col, std::vector<std::vector<std::string>> block) {
        block.resize(std::min(block.size(), static_cast<std::size_t>(rows - row + 1)));
        paste(row, col, std::move(block));
    };
}

// ---- pages ---------------------------------------------------------------------------------------------------------

Layout frmHospitalInfo::hospitalPage() {
    return column({
        fields(
            {{"Hospital:", txtHospital}, {"Address:", txtAddress}, {"Year:", {optYearType0, optYearType1, stretch()}}}),
        group("Names on reports", fields({{"Prepared by:", txtPreparedby},
                                          {"Posted by:", txtPostedby},
                                          {"Verified by:", txtVerifiedby},
                                          {"Position:", txtVerifiedByPosition},
                                          {"Approved by:", txtApprovedby},
                                          {"Position:", txtApprovedByPosition},
                                          {"Noted by:", txtNotedBy},
                                          {"Position:", txtNotedByPosition},
                                          {"Reviewed by:", txtReviewedBy},
                                          {"Position:", txtReviewedByPosition}},
                                         2)),
        fields({{"Disbursement clerk:", {txtCDBClerk, cmdCDBClerk, txtCDBClerkName}}}),
        stretch(),
    });
}

Layout frmHospitalInfo::registrationPage() {
    return column({
        fields({{"TIN:", {txtTIN, stretch()}},
                {"Registered name:", txtRegisteredName},
                {"Last name:", txtLastName},
                {"First name:", txtFirstName},
                {"Middle name:", txtMiddleName},
                {"Trade name:", txtTradeName},
                {"Address:", txtAddress1},
                {"", txtAddress2},
                {"ZIP code:", {txtZipCode, stretch()}},
                {"RDO code:", {txtRDO, stretch()}}},
               2),
        group("Representative", fields({{"Name:", txtRepresentative},
                                        {"TIN:", {txtRepresentativeTIN, stretch()}},
                                        {"Title:", txtRepresentativeTitle}},
                                       2)),
        fields({{"Vendor of the tax bureau:", {txtBIRVendorID, cmdBIRVendorID, txtBIRVendorDesc}}}),
        stretch(),
    });
}

Layout frmHospitalInfo::numberingGroup(const Numbering& n, const std::string& caption,
                                       const std::vector<FieldRow>& more) {
    std::vector<FieldRow> rows{{"Printed number:", {*n.masked, *n.sequential, stretch()}},
                               {"Mask:", {*n.mask, stretch()}},
                               {"Prefix, form:", {*n.prefix, *n.form, stretch()}},
                               {"Looks like:", *n.sample}};
    rows.insert(rows.end(), more.begin(), more.end());
    return group(caption, fields(rows));
}

Layout frmHospitalInfo::optionsPage() {
    return row({
        column({numberingGroup(numberings_[0], "AP Voucher Numbering ",
                               {{"Internal number:", {optAPVNo0, optAPVNo1, stretch()}}}),
                numberingGroup(numberings_[2], "Journal Voucher Numbering ", {}), stretch()}),
        column({numberingGroup(numberings_[1], "Check Voucher Numbering ",
                               {{"Check vouchers:", {optCV0, optCV1, stretch()}}}),
                group("Options", fields({{"Disbursement:", {optDirect0, optDirect1, stretch()}},
                                         {"Compare with:", {optCompare0, optCompare1, stretch()}},
                                         {"Check numbers:", {optCheckNo0, optCheckNo1, stretch()}},
                                         {"Checks print on:", {optChkPrint0, optChkPrint1, stretch()}},
                                         {"AP vouchers print on:", {optAPVPrint0, optAPVPrint1, stretch()}}})),
                stretch()}),
    });
}

// ---- values --------------------------------------------------------------------------------------------------------

void frmHospitalInfo::Form_Load() {
    session_.Parameters.LoadParameters(session_.ClientCode());
    before_ = StoredSettings(session_);
    showValues(before_);
}

void frmHospitalInfo::showValues(const SettingValues& values) {
    for (const BoundBox& bound : boxes_) bound.box->setText(values[bound.setting]);
    for (const BoundPair& bound : pairs_) {
        const SettingPair& pair = *hospitalSettings()[bound.setting].pair;
        (pair.isFirst(values[bound.setting]) ? bound.first : bound.second)->choose();
    }
    int row = 0;
    for (const CodeSetting& code : codeSettings()) {
        ctlCodes.SetText(++row, kCodeCol, values[settingAt(code.store, code.key)]);
    }
    LoadDescriptions();
    for (const Numbering& numbering : numberings_) showSample(numbering);
}

void frmHospitalInfo::LoadDescriptions() {
    clsGLGroup group(session_);
    for (int row = 1; row < ctlCodes.Rows(); ++row) {
        const std::string code = ctlCodes.GetText(row, kCodeCol);
        std::string title = code.empty() ? std::string() : module1::GetAcctName(session_.cn(), code, "");
        if (title.empty() && !code.empty() && codeSettings().at(static_cast<std::size_t>(row - 1)).mayBeGroup) {
            group.Search(code);
            if (group.Found) title = group.Description;
        }
        ctlCodes.SetText(row, kTitleCol, title);
    }
    const std::string vendor = txtBIRVendorID.text();
    txtBIRVendorDesc.setText(vendor.empty() ? "" : module1::GetVendorName(session_.cn(), vendor));
}

SettingValues frmHospitalInfo::values() const {
    SettingValues all = before_;
    for (const BoundBox& bound : boxes_) all[bound.setting] = trimBlanks(bound.box->text());
    for (const BoundPair& bound : pairs_) {
        const SettingPair& pair = *hospitalSettings()[bound.setting].pair;
        all[bound.setting] = bound.first->chosen() ? pair.first.stored : pair.second.stored;
    }
    int row = 0;
    for (const CodeSetting& code : codeSettings()) {
        all[settingAt(code.store, code.key)] = trimBlanks(ctlCodes.GetText(++row, kCodeCol));
    }
    return all;
}

NumberSample frmHospitalInfo::sampleOf(const Numbering& n) {
    return n.masked->chosen() ? maskSample(n.mask->text(), n.fourDigits, Today())
                              : formSample(n.prefix->text(), n.form->text(), Today());
}

void frmHospitalInfo::showSample(const Numbering& numbering) {
    const bool masked = numbering.masked->chosen();
    numbering.mask->setEnabled(masked);
    numbering.prefix->setEnabled(!masked);
    numbering.form->setEnabled(!masked);
    const NumberSample sample = sampleOf(numbering);
    const std::string warning = sample.tooLong ? kLongNumber : sample.warning;
    numbering.sample->setText(sample.text + (warning.empty() ? "" : "   (" + warning + ")"));
    numbering.sample->setAlert(!warning.empty());
}

bool frmHospitalInfo::numberFits(const Numbering& numbering) {
    const NumberSample sample = sampleOf(numbering);
    if (!sample.text.empty() && !sample.tooLong) return true;
    MsgBox(sample.tooLong ? kLongNumber : kNoNumber, Icon::Exclamation);
    return false;
}

// ---- validation ----------------------------------------------------------------------------------------------------

void frmHospitalInfo::txtTIN_Validate(TextBox& box, bool& Cancel) {
    if (trimBlanks(box.text()).empty()) return;
    const std::string number = taxNumber(box.text());
    Cancel = number.empty();
    if (Cancel) {
        MsgBox(kNoTin, Icon::Exclamation);
    } else {
        box.setText(number);
    }
}

void frmHospitalInfo::txtCDBClerk_Validate(bool& Cancel) {
    const std::string code = module1::SQLString(txtCDBClerk.text());
    const std::string name = code.empty() ? std::string() : module1::GetEmployeeName(session_.cn(), code);
    Cancel = !code.empty() && name.empty();
    if (Cancel) {
        MsgBox(kNoEmployee, Icon::Exclamation);
    } else {
        txtCDBClerkName.setText(name);
    }
}

void frmHospitalInfo::cmdCDBClerk_Click() {
    frmSearch dialog(session_);
    dialog.SearchCaption = "Employees";
    dialog.Query =
        "select LastName + ', ' + FirstName [Description], EmployeeID [Code] from PASSWORD..tbPasswordMain where "
        "LastName "
        "like '##%' order by LastName, FirstName";
    if (dialog.ShowDialog()) {
        txtCDBClerk.setText(dialog.Code());
        txtCDBClerkName.setText(module1::GetEmployeeName(session_.cn(), dialog.Code()));
    }
    txtCDBClerk.setFocus();
}

void frmHospitalInfo::txtBIRVendorID_Validate(bool& Cancel) {
    const std::string id = module1::SQLString(txtBIRVendorID.text());
    const std::string name = id.empty() ? std::string() : module1::GetVendorName(session_.cn(), id);
    Cancel = name == kNoVendor;
    if (Cancel) {
        MsgBox(kNoVendor, Icon::Exclamation);
    } else {
        txtBIRVendorDesc.setText(name);
    }
}

void frmHospitalInfo::cmdBIRVendorID_Click() {
    frmSearchVend dialog(session_);
    dialog.Query = "select Company, VendorID [Code] from VEND where Company like '##%' order by Company";
    if (dialog.ShowDialog()) {
        txtBIRVendorID.setText(dialog.Code());
        txtBIRVendorDesc.setText(module1::GetVendorName(session_.cn(), dialog.Code()));
    }
    txtBIRVendorID.setFocus();
}

void frmHospitalInfo::ctlCodes_ValidateEntry(bool& Cancel) {
    const int row = ctlCodes.Row();
    const std::string typed(trimBlanks(ctlCodes.TextEntry()));
    if (typed.empty()) {
        ctlCodes.SetText(row, kTitleCol, "");
        return;
    }
    const CodeSetting& code = codeSettings().at(static_cast<std::size_t>(row - 1));
    if (code.mayBeGroup) {
        clsGLGroup group(session_);
        group.Search(typed);
        if (group.Found) {
            ctlCodes.SetTextEntry(group.GLGroup);
            ctlCodes.SetText(row, kTitleCol, group.Description);
            return;
        }
    }
    clsAccount account(session_);
    Cancel = !account.Validate(typed, "ALL");
    if (Cancel) return;
    ctlCodes.SetTextEntry(account.AccountCode);
    ctlCodes.SetText(row, kTitleCol, account.AccountTitle);
}

void frmHospitalInfo::ctlCodes_Browse() {
    clsAccount account(session_);
    if (!account.Validate("", "ALL")) return;
    ctlCodes.SetText(ctlCodes.Row(), kCodeCol, account.AccountCode);
    ctlCodes.SetText(ctlCodes.Row(), kTitleCol, account.AccountTitle);
}

bool frmHospitalInfo::refuseAt(int page, Control& control, const std::string& message) {
    sstEntry.setIndex(page);
    control.setRefused(message);
    MsgBox(message, Icon::Exclamation);
    control.setFocus();
    return false;
}

/// Fields that were never left hold what was stored, which need not be right.
bool frmHospitalInfo::checkAll() {
    if (trimBlanks(txtHospital.text()).empty()) return refuseAt(kHospital, txtHospital, kNoHospital);
    for (TextBox* tin : {&txtTIN, &txtRepresentativeTIN}) {
        if (!trimBlanks(tin->text()).empty() && taxNumber(tin->text()).empty())
            return refuseAt(kRegistration, *tin, kNoTin);
    }
    for (const Numbering& numbering : numberings_) {
        const NumberSample sample = sampleOf(numbering);
        TextBox& box = numbering.masked->chosen() ? *numbering.mask : *numbering.form;
        if (sample.text.empty()) return refuseAt(kOptions, box, kNoNumber);
        if (sample.tooLong) return refuseAt(kOptions, box, kLongNumber);
    }
    return true;
}

// ---- save and leave ------------------------------------------------------------------------------------------------

void frmHospitalInfo::cmdOption0_Click() {
    if (!checkAll()) return;
    const SettingValues now = values();
    frmChanges dialog("Program Settings");
    if (!dialog.ShowDialog(ChangesOf(StoredSettings(session_), now))) return;
    if (!run("Save_Routine", [&] { SaveSettings(session_, now); })) return;
    MsgBox("Program settings saved.", Icon::Information, kTitle);
    leaving_ = true;
    Unload();
}

void frmHospitalInfo::Form_QueryUnload(bool& Cancel) {
    if (leaving_ || values() == before_) return;
    Cancel = !Ask("Changes will be ignored! Do you really wish to Exit?", "Warning", Icon::Exclamation);
}

void frmHospitalInfo::Form_Unload() { module1::SaveUserLog(session_, "Exit Program Settings"); }

}  // namespace kv
