#pragma once
// PlayForms: a small program with one control of each kind, for the tests of the player and of the grid and lists.

#include <map>
#include <memory>
#include <string>

#include "platform/data/Connection.h"
#include "platform/forms/Dialogs.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/forms/Lists.h"
#include "platform/forms/player/PlayedProgram.h"

namespace kv::test {

/// A database of one counter: "ADD n" adds, "COUNT" gives it, "NULL", "NONE", "FAIL n" do as they say. It lives in a
/// file where one is given, so that two programs share it.
class CounterConnection : public Connection {
public:
    explicit CounterConnection(std::string file = {}) : file_(std::move(file)) {}
    int transactionDepth() const override { return depth_; }
    std::string connectionString() const override { return "Provider=Counter;Server=here;"; }
    void setDefaultDatabase(const std::string&) override {}
    std::string defaultDatabase() const override { return "COUNTER"; }
    void setCommandTimeout(int) override {}
    bool isOpen() const override { return true; }
    void close() override {}

protected:
    bool run(std::string_view statement, std::vector<ResultSet>& results, std::vector<DbError>& messages) override;

private:
    long value() const;
    void setValue(long value);
    std::string file_;
    int depth_ = 0;
    long before_ = 0;
};

class frmPick : public Form {
public:
    frmPick();
    std::string chosen;

private:
    void fill();
    TextBox txtSearchStr{*this, "txtSearchStr"};
    Grid grdDispWindow{*this, "grdDispWindow"};
    CommandButton cmdSelect{*this, "cmdSelect", "&Select"};
    CommandButton cmdCancel{*this, "cmdCancel", "&Cancel"};
};

/// One control of each kind. Vendors that begin with BAD and amounts that are no numbers are refused.
class frmVoucher : public Form {
public:
    explicit frmVoucher(Connection& connection);
    void Form_Load() override;
    void Form_QueryUnload(bool& Cancel) override;

    TextBox txtVendorID{*this, "txtVendorID"};
    TextBox txtName{*this, "txtName"};
    TextBox txtLocked{*this, "txtLocked"};
    DatePicker dtpDate{*this, "dtpDate"};
    ComboBox cboType{*this, "cboType"};
    CheckBox chkRush{*this, "chkRush", "&Rush"};
    OptionButton optKind_0{*this, "optKind_0", "Check", "kind"};
    OptionButton optKind_1{*this, "optKind_1", "Cash", "kind"};
    ListView lvwList{*this, "lvwList"};
    TreeView tvwChart{*this, "tvwChart"};
    Grid grdAccounts{*this, "grdAccounts"};
    TabStrip tabVoucher{*this, "tabVoucher"};
    Label lblTotal{*this, "lblTotal", "0.00"};
    Label lblLast{*this, "lblLast"};
    CommandButton cmdOption0{*this, "cmdOption0", "&Save Voucher"};
    CommandButton cmdOption1{*this, "cmdOption1", "&Close"};
    CommandButton cmdPick{*this, "cmdPick", "Pick"};
    CommandButton cmdAmount{*this, "cmdAmount", "Amount"};
    CommandButton cmdPrint{*this, "cmdPrint", "Print"};
    CommandButton cmdExport{*this, "cmdExport", "Export"};
    CommandButton cmdBroken{*this, "cmdBroken", "Broken"};
    CommandButton cmdStuck{*this, "cmdStuck", "Stuck"};
    CommandButton cmdOff{*this, "cmdOff", "Off"};

    bool asksOnClose = true;

private:
    void wire();
    void wireGrid();
    void showTotal();
    void save();
    Connection& connection_;
};

class frmShell : public Form {
public:
    explicit frmShell(Connection& connection);

private:
    Connection& connection_;
    MenuItem mnuFileVoucher{*this, "mnuFileVoucher", "&Voucher"};
    MenuItem mnuOff{*this, "mnuOff", "Off"};
    MenuItem mnuHidden{*this, "mnuHidden", "Hidden"};
    Toolbar tbrMain{*this, "tbrMain"};
    CommandButton cmdHello{*this, "cmdHello", "Hello"};
    Label lblHello{*this, "lblHello"};
};

class frmSignIn : public Form {
public:
    frmSignIn();
    bool accepted = false;

private:
    TextBox txtEmployeeCode{*this, "txtEmployeeCode"};
    TextBox txtPassword{*this, "txtPassword"};
    CommandButton cmdOK{*this, "cmdOK", "&OK"};
    CommandButton cmdCancel{*this, "cmdCancel", "&Cancel"};
};

class PlayForms : public PlayedProgram {
public:
    explicit PlayForms(std::string file = {}) : file_(std::move(file)), connection_(file_) {}
    ~PlayForms() override;
    bool start() override;
    void stop() override;
    void observe(std::function<void(std::string_view)> listener) override { connection_.observe(std::move(listener)); }
    std::unique_ptr<Connection> connect() override { return std::make_unique<CounterConnection>(file_); }
    ShownReport* report() override { return report_.get(); }

private:
    std::string file_;
    CounterConnection connection_;
    std::unique_ptr<frmShell> shell_;
    std::unique_ptr<ShownReport> report_;
};

}  // namespace kv::test
