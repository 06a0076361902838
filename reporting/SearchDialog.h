#pragma once
// SearchDialog: the shape that all search dialogs share: a text, the rows of a statement that hold it, one of them
// chosen.
//
// The statement has "##" where the text goes. It is run as the user types (AutoSearch) or presses Enter.

#include <string>

#include "platform/data/Recordset.h"
#include "platform/forms/Form.h"
#include "platform/forms/Lists.h"

namespace kv {

class Session;

class SearchDialog : public Form {
public:
    SearchDialog(Session& session, std::string name, std::string caption);

    std::string SearchCaption;
    std::string Query;
    /// Condition that the statement gets appended, e.g. " and Status = 'A'".
    std::string Criteria;

    /// Shows the dialog; `Text` is what the search starts with. True when a row was chosen.
    bool ShowDialog(std::string_view Text = {});
    const std::string& Code() const { return code_; }
    const std::string& Title() const { return title_; }
    bool Confirmed() const { return confirmed_; }
    /// Text of the chosen row in a column of the statement; empty where the statement has no such column.
    std::string Cell(std::string_view column) const;

    TextBox txtSearchStr{*this, "txtSearchStr"};
    CheckBox chkAutoSearch{*this, "chkAutoSearch", "A&utoSearch"};
    ListView grdDispWindow{*this, "grdDispWindow"};
    CommandButton cmdSelect{*this, "cmdSelect", "&Select"};
    CommandButton cmdCancel{*this, "cmdCancel", "&Cancel"};
    Label lblTotal{*this, "lblTotal"};

protected:
    void Form_Load() override;
    /// Which columns of the result are the code and the name; -1 where there is none.
    virtual int codeColumn(const Recordset& rows) const;
    /// How the columns of the result look.
    virtual std::vector<ListColumn> columnsOf(const Recordset& rows) const;
    virtual int titleColumn(const Recordset& rows) const;
    /// A value as its cell shows it.
    virtual std::string shownText(std::size_t column, const Value& value, DataType type) const;
    virtual Layout buttonRow();
    Session& session() const { return session_; }
    void RefreshGrid();

private:
    void showRows(const Recordset& rows);
    void txtSearchStr_KeyDown(const std::string& key, bool& handled);
    void cmdSelect_Click();

    Session& session_;
    std::string code_, title_;
    std::vector<std::string> names_;   ///< columns of the statement
    std::vector<std::string> chosen_;  ///< cells of the chosen row
    std::string shownFor_;             ///< the text that the rows belong to
    bool confirmed_ = false;
    bool settingText_ = false;
    int codeColumn_ = -1;
    int titleColumn_ = -1;
};

/// "##" replaced by the text, apostrophes doubled.
std::string searchStatement(std::string_view query, std::string_view criteria, std::string_view text);

}  // namespace kv
