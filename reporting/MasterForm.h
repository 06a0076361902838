#pragma once
// MasterForm: the screen of a master file: a tab with the list, a tab with the entry, and the buttons around them.
//
// Ctrl+F searches, Insert adds, Enter on a row opens it, Ctrl+S saves, Escape leaves.

#include <memory>
#include <vector>

#include "platform/forms/Lists.h"
#include "reporting/MasterFile.h"
#include "reporting/MasterInput.h"
#include "reporting/RowWatch.h"

namespace kv {

class MasterForm : public Form {
public:
    MasterForm(Session& session, MasterFile file);

    /// Opens on the entry of a row, or on a new one that holds these values, instead of on the list.
    void startWith(MasterKey key);
    void startWithNew(MasterValues values);
    /// The key that was saved last; empty when nothing was.
    const MasterKey& savedKey() const { return savedKey_; }

private:
    void Form_Load() override;
    void Form_QueryUnload(bool& Cancel) override;

    // what the constructor builds
    void makeInputs();
    void connect();
    void lay();

    // the list
    void UpdateList();
    void RefreshList();
    void lvwList_ItemClick();
    void lvwList_DblClick(int row);
    void lvwList_ColumnClick(int column);
    void txtSearch_Change();
    void txtSearch_KeyDown(const std::string& key, bool& handled);
    std::string listStatement() const;
    ListView::Item listItem(const Recordset& rows, const Row& row) const;
    void selectKey(const MasterKey& key);
    MasterKey selectedKey() const;
    int firstShownRow() const;
    std::string filterWhere() const;
    bool makeList();

    // the entry
    void tabAcct_Click(int page);
    void showPage(int page);
    bool LoadFile(const MasterKey& key);
    void beginNew(const MasterValues& values);
    void setMode(const char* mode);
    bool isNew() const { return mode_ == "NEW"; }
    bool changed() const { return !mode_.empty() && values() != loadedValues_; }
    bool mayLeave();
    void leaveEntry();
    void txtCode_Validate(bool& Cancel);
    void choiceChanged();
    MasterValues values() const;
    MasterKey entryKey() const;
    MasterInput* input(std::string_view control) const;
    void focusEntry() const;

    // saving and removing
    void Save_Routine();
    bool complete();
    void logSave(const MasterKey& key);
    void saveRow(const MasterKey& key);
    bool inUse(const MasterKey& key);
    void Retire(const MasterKey& key);
    void log(const std::string& pattern, const MasterKey& key);
    std::string said(const std::string& pattern, const MasterKey& key) const { return masterText(pattern, key); }

    void cmdOption_0_Click();
    void cmdOption_1_Click();
    void cmdOption_2_Click();
    void cmdOption_3_Click();
    void cmdExport_Click();
    void cmdOpt0_Click();
    void cmdOpt1_Click();

    Session& session_;
    const MasterFile file_;
    TabStrip tabAcct{*this, "tabAcct"};
    TextBox txtSearch{*this, "txtSearch"};
    Label lblCount{*this, "lblCount"};
    ListView list_;
    Label lblKey{*this, "lblKey"};
    Label lblMode{*this, "lblMode"};
    CommandButton cmdOpt0{*this, "cmdOpt0", "&Save", "document-save"};
    CommandButton cmdOpt1{*this, "cmdOpt1", "Ca&ncel", "dialog-cancel"};  // before Close: the one that Escape takes
    CommandButton cmdOption0{*this, "cmdOption0", "&Close", "document-close"};
    CommandButton cmdOption1{*this, "cmdOption1", "&Add", "list-add"};
    CommandButton cmdOption2{*this, "cmdOption2", "&Delete", "edit-delete"};
    CommandButton cmdOption3{*this, "cmdOption3", "&Print", "document-print"};
    CommandButton cmdExport{*this, "cmdExport", "E&xport", "document-export"};
    std::vector<std::unique_ptr<OptionButton>> sorts_;
    std::vector<std::unique_ptr<MasterInput>> inputs_;

    std::string mode_;  ///< "NEW", "EDIT", or empty while the entry tab is
    MasterKey key_;     ///< of the row that is edited
    MasterKey savedKey_;
    RowWatch watch_;
    MasterValues loadedValues_;
    std::size_t sort_ = 0;
    int sortedColumn_ = -1;
    bool sortedDown_ = false;
    bool movingPage_ = false;
    MasterKey startKey_;
    MasterValues startValues_;
    bool startNew_ = false;
};

}  // namespace kv
