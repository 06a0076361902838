#pragma once
// frmCloseCockpit: each book and month of a year as a cell: how far it is, what stands in the way, and the way there.

#include "ledger/CloseBoard.h"
#include "ledger/ClosePreview.h"
#include "platform/forms/Form.h"

namespace kv {

class Session;

class frmCloseCockpit : public Form {
public:
    explicit frmCloseCockpit(Session& session);

    Label lblYear{*this, "lblYear"};
    CommandButton cmdPrevious{*this, "cmdPrevious", "Pre&vious Year", "go-previous"};
    CommandButton cmdNext{*this, "cmdNext", "&Next Year", "go-next"};
    Grid grdBoard{*this, "grdBoard"};
    Label lblCell{*this, "lblCell"};
    Label lblStory{*this, "lblStory"};
    Label lblTrouble{*this, "lblTrouble"};
    TabStrip tabDetail{*this, "tabDetail"};
    ListView lvwBatches{*this, "lvwBatches"};
    ListView lvwChanged{*this, "lvwChanged"};
    Label lblTotals{*this, "lblTotals"};
    CommandButton cmdCloseMonth{*this, "cmdCloseMonth", "Close &Month", "object-locked"};
    CommandButton cmdReopen{*this, "cmdReopen", "&Reopen...", "object-unlocked"};
    CommandButton cmdPrepare{*this, "cmdPrepare", "&Prepare", "media-playback-start"};
    CommandButton cmdClose{*this, "cmdClose", "&Close"};

protected:
    void Form_Load() override;

private:
    void LoadBoard();
    void ShowCell();
    void ShowBatches(const BoardCell& cell);
    void ShowChanged(const BoardCell& cell);
    const BoardCell* current() const;
    bool maySee(std::string_view book) const;
    void moveYear(int years);
    void GoToCell();
    void OpenDocument(const ListView& list);
    void cmdCloseMonth_Click();
    void cmdReopen_Click();
    void cmdPrepare_Click();
    void wire();

    Session& session_;
    int year_ = 0;
    std::vector<BoardRow> board_;
};

}  // namespace kv
