#pragma once
// frmHospitalInfo: the program settings: hospital and names, account codes, tax registration, numbering and options.

#include <vector>

#include "ledger/HospitalSettings.h"
#include "platform/forms/Form.h"
#include "reporting/ctlGrid.h"

namespace kv {

class Session;

class frmHospitalInfo : public Form {
public:
    explicit frmHospitalInfo(Session& session);

    TabStrip sstEntry{*this, "sstEntry"};
    // hospital data
    TextBox txtHospital{*this, "txtHospital"};
    TextBox txtAddress{*this, "txtAddress"};
    OptionButton optYearType0{*this, "optYearType0", kYearPair.first.caption, "optYearType"};
    OptionButton optYearType1{*this, "optYearType1", kYearPair.second.caption, "optYearType"};
    TextBox txtPreparedby{*this, "txtPreparedby"};
    TextBox txtPostedby{*this, "txtPostedby"};
    TextBox txtVerifiedby{*this, "txtVerifiedby"};
    TextBox txtVerifiedByPosition{*this, "txtVerifiedByPosition"};
    TextBox txtApprovedby{*this, "txtApprovedby"};
    TextBox txtApprovedByPosition{*this, "txtApprovedByPosition"};
    TextBox txtNotedBy{*this, "txtNotedBy"};
    TextBox txtNotedByPosition{*this, "txtNotedByPosition"};
    TextBox txtReviewedBy{*this, "txtReviewedBy"};
    TextBox txtReviewedByPosition{*this, "txtReviewedByPosition"};
    TextBox txtCDBClerk{*this, "txtCDBClerk"};
    CommandButton cmdCDBClerk{*this, "cmdCDBClerk", "..."};
    TextBox txtCDBClerkName{*this, "txtCDBClerkName"};
    // account codes
    ctlGrid ctlCodes{*this, "ctlCodes"};
    // tax registration
    TextBox txtTIN{*this, "txtTIN"};
    TextBox txtRegisteredName{*this, "txtRegisteredName"};
    TextBox txtLastName{*this, "txtLastName"};
    TextBox txtFirstName{*this, "txtFirstName"};
    TextBox txtMiddleName{*this, "txtMiddleName"};
    TextBox txtTradeName{*this, "txtTradeName"};
    TextBox txtAddress1{*this, "txtAddress1"};
    TextBox txtAddress2{*this, "txtAddress2"};
    TextBox txtZipCode{*this, "txtZipCode"};
    TextBox txtRDO{*this, "txtRDO"};
    TextBox txtRepresentative{*this, "txtRepresentative"};
    TextBox txtRepresentativeTIN{*this, "txtRepresentativeTIN"};
    TextBox txtRepresentativeTitle{*this, "txtRepresentativeTitle"};
    TextBox txtBIRVendorID{*this, "txtBIRVendorID"};
    CommandButton cmdBIRVendorID{*this, "cmdBIRVendorID", "..."};
    TextBox txtBIRVendorDesc{*this, "txtBIRVendorDesc"};
    // options
    OptionButton optPrintVoucher0{*this, "optPrintVoucher0", kNumberingPair.first.caption, "optPrintVoucher"};
    OptionButton optPrintVoucher1{*this, "optPrintVoucher1", kNumberingPair.second.caption, "optPrintVoucher"};
    TextBox txtPrintVoucherFormat{*this, "txtPrintVoucherFormat"};
    TextBox txtVoucherPrefix{*this, "txtVoucherPrefix"};
    TextBox txtVoucherFormat{*this, "txtVoucherFormat"};
    Label lblVoucherSample{*this, "lblVoucherSample"};
    OptionButton optAPVNo0{*this, "optAPVNo0", kVoucherKeyPair.first.caption, "optAPVNo"};
    OptionButton optAPVNo1{*this, "optAPVNo1", kVoucherKeyPair.second.caption, "optAPVNo"};
    OptionButton optPrintCVNo0{*this, "optPrintCVNo0", kNumberingPair.first.caption, "optPrintCVNo"};
    OptionButton optPrintCVNo1{*this, "optPrintCVNo1", kNumberingPair.second.caption, "optPrintCVNo"};
    TextBox txtPrintCVNoFormat{*this, "txtPrintCVNoFormat"};
    TextBox txtCVPrefix{*this, "txtCVPrefix"};
    TextBox txtCVFormat{*this, "txtCVFormat"};
    Label lblCVSample{*this, "lblCVSample"};
    OptionButton optPrintJVBatch0{*this, "optPrintJVBatch0", kNumberingPair.first.caption, "optPrintJVBatch"};
    OptionButton optPrintJVBatch1{*this, "optPrintJVBatch1", kNumberingPair.second.caption, "optPrintJVBatch"};
    TextBox txtPrintJVBatchFormat{*this, "txtPrintJVBatchFormat"};
    TextBox txtJVPrefix{*this, "txtJVPrefix"};
    TextBox txtJVFormat{*this, "txtJVFormat"};
    Label lblJVSample{*this, "lblJVSample"};
    OptionButton optDirect0{*this, "optDirect0", kDirectPair.first.caption, "optDirect"};
    OptionButton optDirect1{*this, "optDirect1", kDirectPair.second.caption, "optDirect"};
    OptionButton optCompare0{*this, "optCompare0", kComparePair.first.caption, "optCompare"};
    OptionButton optCompare1{*this, "optCompare1", kComparePair.second.caption, "optCompare"};
    OptionButton optCheckNo0{*this, "optCheckNo0", kSequencePair.first.caption, "optCheckNo"};
    OptionButton optCheckNo1{*this, "optCheckNo1", kSequencePair.second.caption, "optCheckNo"};
    OptionButton optCV0{*this, "optCV0", kSequencePair.first.caption, "optCV"};
    OptionButton optCV1{*this, "optCV1", kSequencePair.second.caption, "optCV"};
    OptionButton optChkPrint0{*this, "optChkPrint0", kPaperPair.first.caption, "optChkPrint"};
    OptionButton optChkPrint1{*this, "optChkPrint1", kPaperPair.second.caption, "optChkPrint"};
    OptionButton optAPVPrint0{*this, "optAPVPrint0", kPaperPair.first.caption, "optAPVPrint"};
    OptionButton optAPVPrint1{*this, "optAPVPrint1", kPaperPair.second.caption, "optAPVPrint"};

    CommandButton cmdOption0{*this, "cmdOption0", "&Save", "document-save"};
    CommandButton cmdOption1{*this, "cmdOption1", "&Close"};

protected:
    void Form_Load() override;
    void Form_QueryUnload(bool& Cancel) override;
    void Form_Unload() override;

private:
    enum Page { kHospital, kCodes, kRegistration, kOptions };

    struct BoundBox {
        TextBox* box;
        std::size_t setting;
        int page;
    };
    struct BoundPair {
        OptionButton* first;
        OptionButton* second;
        std::size_t setting;
    };
    /// The boxes by which a book's printed numbers are set.
    struct Numbering {
        OptionButton* masked;
        OptionButton* sequential;
        TextBox* mask;
        TextBox* prefix;
        TextBox* form;
        Label* sample;
        bool fourDigits;
    };

    void bind();
    void bindBox(TextBox& box, Setting::Store store, std::string_view key, int page, int length);
    void bindPair(OptionButton& first, OptionButton& second, Setting::Store store, std::string_view key);
    void connect();
    void connectSearch(TextBox& box, CommandButton& button, std::string help, void (frmHospitalInfo::*search)());
    void connectNumbering(const Numbering& numbering);
    void initCodes();
    Layout hospitalPage();
    Layout registrationPage();
    Layout optionsPage();
    static Layout numberingGroup(const Numbering& numbering, const std::string& caption,
                                 const std::vector<FieldRow>& more);

    void showValues(const SettingValues& values);
    void LoadDescriptions();
    SettingValues values() const;
    static NumberSample sampleOf(const Numbering& numbering);
    void showSample(const Numbering& numbering);
    static bool numberFits(const Numbering& numbering);
    bool checkAll();
    bool refuseAt(int page, Control& control, const std::string& message);

    void txtTIN_Validate(TextBox& box, bool& Cancel);
    void txtCDBClerk_Validate(bool& Cancel);
    void cmdCDBClerk_Click();
    void txtBIRVendorID_Validate(bool& Cancel);
    void cmdBIRVendorID_Click();
    void ctlCodes_ValidateEntry(bool& Cancel);
    void ctlCodes_Browse();
    void cmdOption0_Click();

    Session& session_;
    std::vector<BoundBox> boxes_;
    std::vector<BoundPair> pairs_;
    std::vector<Numbering> numberings_;
    SettingValues before_;
    bool leaving_ = false;
};

}  // namespace kv
