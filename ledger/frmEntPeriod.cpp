#include "ledger/frmEntPeriod.h"

#include "core/MainMenu.h"
#include "core/Session.h"
#include "core/module1.h"
#include "ledger/ClosePreview.h"
#include "ledger/ReportDialogs.h"
#include "ledger/Statements.h"
#include "platform/base/Text.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmSelectDates.h"

namespace kv {
namespace {

constexpr int kEntity_chars = 36;

}  // namespace

frmEntPeriod::frmEntPeriod(Session& session) : Form("frmEntPeriod", "Period"), session_(session) {
    dtpPeriod.setHelp("Month: type 03/2024, or + and - to move by a month.");
    txtEntity.code().width(12);
    txtReason.maxLength(200);
    txtReason.setHelp("Why the month is opened again; it is kept in the log of closes.");
    lblTotals.look(Label::Look::Hint);
    lblTrouble.setAlert(true);
    lvwBatches.setColumns(previewColumns());
    lvwBatches.emptyText("The book has no batch in this month.");
    lvwBatches.rows(9);
    lvwBatches.setHelp("What the close brings into the ledger, first what stands in its way. Enter opens a batch.");
    lvwBatches.onDblClick = [this](int) { OpenBatch(); };
    dtpPeriod.onChange = [this] {
        if (loaded()) ShowPreview();
    };
    txtEntity.onValidate = [this](bool& cancel) { txtEntity_Validate(cancel); };
    txtEntity.onKeyDown = [this](const std::string& key, bool& handled) {
        handled = key == "F2" && report_;
        if (handled) FindEntity("");
    };
    cmdEntity.narrow().skipsTab();
    cmdEntity.setCausesValidation(false);
    cmdEntity.onClick = [this] { FindEntity(""); };
    lblEntity.look(Label::Look::Hint);
    cmdOption0.primary();
    cmdOption0.onClick = [this] { cmdOption0_Click(); };
    cmdOption1.cancels();
    cmdOption1.onClick = [this] { Unload(); };
}

bool frmEntPeriod::ShowDialog(int Mode, int SubMode, std::string_view Text, std::string& Result) {
    const PeriodDialogLook* look = periodDialogLook(Mode);
    report_ = findStatement(StatementDialog::EntPeriod, Mode);
    if (!look && !report_) throw Error(5, "frmEntPeriod", "Mode " + std::to_string(Mode) + " is not known.");
    mode_ = Mode;
    subMode_ = SubMode;
    done_ = false;
    const bool prepared = report_ && !session_.Sys.rptpdEnd.empty();
    dtpPeriod.setValue(dateOfPeriod(prepared ? session_.Sys.rptpdEnd : session_.Sys.glperiod));
    txtEntity.setText(Text);
    if (report_) {
        Dress(report_->title, entityCaption(report_->entity), "&OK");
    } else {
        Dress(look->caption, look->entityCaption, look->okCaption);
    }
    ShowPreview();
    ShowModal();
    Result = txtEntity.text();
    return done_;
}

void frmEntPeriod::Dress(const char* caption, const char* entity, const char* okCaption) {
    setCaption(trimBlanks(caption));
    cmdOption0.setCaption(okCaption);
    cmdEntity.setVisible(report_ && entity);
    lblEntity.setVisible(report_ && entity);
    txtEntity.setVisible(entity != nullptr);
    txtEntity.setHelp(report_ ? "Code, or the beginning of its name. F2 searches; blank for all." : "");
    setLayout(column({Fields(entity), buttons({cmdOption0, cmdOption1})}));
    if (entity) {
        setFirstFocus(txtEntity);
    } else {
        setFirstFocus(dtpPeriod);
    }
}

/// The month; with a code for a report, with a reason for a reopening, with what it brings for a close.
Layout frmEntPeriod::Fields(const char* entity) {
    const bool closes = !closedBook().empty();
    const bool reopens = !report_ && mode_ == static_cast<int>(PeriodMode::ReopenBook);
    txtReason.setVisible(reopens);
    for (Control* control : std::initializer_list<Control*>{&lvwBatches, &lblTotals, &lblTrouble}) {
        control->setVisible(closes);
    }
    if (closes) {
        setSize(940, 460);
        return expand(
            column({row({fields({{"Pe&riod :", dtpPeriod}}), lblTotals, stretch()}), expand(lvwBatches), lblTrouble}));
    }
    if (reopens) return fields({{entity, txtEntity}, {"Pe&riod :", dtpPeriod}, {"Reaso&n :", txtReason}});
    if (!entity) return fields({{"Pe&riod :", dtpPeriod}});
    const FieldRow field = report_ ? FieldRow(entity, {txtEntity, cmdEntity, width(Layout(lblEntity), kEntity_chars)})
                                   : FieldRow(entity, txtEntity);
    return fields({field, {"Pe&riod :", dtpPeriod}});
}

bool frmEntPeriod::FindEntity(const std::string& typed) {
    const std::optional<FoundCode> found = entityLookup(session_, report_->entity)(typed);
    if (!found) return false;
    txtEntity.setText(found->code);
    lblEntity.setText(found->name);
    return true;
}

void frmEntPeriod::ShowPreview() {
    const std::string book = closedBook();
    if (book.empty()) return;
    const ClosePreview preview = readClosePreview(session_.cn(), book, module1::GetPeriod(dtpPeriod.value()));
    lvwBatches.setItems(previewItems(preview, book));
    lblTotals.setText(totalsText(preview));
    lblTrouble.setText(troubleText(preview));
}

void frmEntPeriod::OpenBatch() {
    const BookEntry* book = findBook(closedBook());
    if (!book || lvwBatches.selected() < 0 || !session_.screens.hasDocuments(book->documents)) return;
    session_.screens.openDocument(session_, book->documents, lvwBatches.selectedKey());
    ShowPreview();
}

void frmEntPeriod::txtEntity_Validate(bool& Cancel) {
    if (report_) {
        lblEntity.setText("");
        Cancel = !txtEntity.text().empty() && !FindEntity(txtEntity.text());
        return;
    }
    if (mode_ != static_cast<int>(PeriodMode::ReopenBook) || isBookCode(txtEntity.text())) return;
    MsgBox("Invalid book.", Icon::Exclamation);
    Cancel = true;
}

void frmEntPeriod::cmdOption0_Click() {
    session_.CurrentPeriod = module1::GetPeriod(dtpPeriod.value());
    if (report_) {
        ShowStatement(
            session_, *report_,
            {.period1 = session_.CurrentPeriod, .period2 = session_.CurrentPeriod, .entity = txtEntity.text()});
        session_.Sys.rptpdstart = session_.CurrentPeriod;
        session_.Sys.rptpdEnd = session_.CurrentPeriod;
        done_ = true;
        Unload();
        return;
    }
    if (!doTask(static_cast<PeriodMode>(mode_), session_.CurrentPeriod)) return;
    done_ = true;
    Unload();
}

bool frmEntPeriod::doTask(PeriodMode mode, const std::string& period) {
    switch (mode) {
        case PeriodMode::ClosePeriod:
            return PostGLPeriod(session_, period);
        case PeriodMode::CloseAP:
        case PeriodMode::CloseCDB:
        case PeriodMode::PostBegBal:
            return CloseThrough(session_, mode, period);
        case PeriodMode::ReopenBook:
            return UnPostBook(session_, txtEntity.text(), period, module1::ATrim(txtReason.text()));
        case PeriodMode::SetGLPeriod:
        case PeriodMode::SetAPPeriod:
        case PeriodMode::SetCDBPeriod:
            UpdatePrd(session_, mode, period);
            return true;
        case PeriodMode::Prepare:
            ReportPreparation(session_, period);
            MsgBox("Financial Report Preparation Completed.", Icon::Information, "Message");
            return true;
    }
    return false;
}

}  // namespace kv
