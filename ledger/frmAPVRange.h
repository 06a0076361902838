#pragma once
// frmAPVRange: asks for the first and the last number of a range of batches and prints them.

#include "platform/forms/Form.h"

namespace kv {

class Session;

class frmAPVRange : public Form {
public:
    explicit frmAPVRange(Session& session);

    /// Asks for a range of the open book's batches and prints their journal; `Start` is offered as both ends.
    void ShowDialog(std::string_view Start = {});

    Label lblHint{*this, "lblHint"};
    TextBox txtStart{*this, "txtStart"};
    TextBox txtEnd{*this, "txtEnd"};
    CommandButton cmdOption0{*this, "cmdOption0", "&Print", "document-print"};
    CommandButton cmdOption1{*this, "cmdOption1", "&Close"};

private:
    void ValidateNumber(TextBox& box, bool& Cancel);
    void cmdOption0_Click();
    bool printedNumbers() const;

    Session& session_;
};

}  // namespace kv
