#include "ledger/frmGL.h"

#include "core/BookState.h"
#include "core/Session.h"
#include "ledger/Statements.h"
#include "ledger/frmEntPeriod.h"
#include "ledger/frmRepYear.h"

namespace kv {
namespace {

constexpr int kMonthsShown = 9;
constexpr const char* kReportIcon = "office-report";
constexpr std::string_view kTrialBalance = "mnuTrialBalance1";

}  // namespace

frmGL::frmGL(Session& session) : Form("frmGL", "General Ledger", Window::Child), session_(session) {
    Label1.look(Label::Look::Heading);
    lblPrepared.look(Label::Look::Hint);
    tbrGL.button("ENTER", "Prepare", "media-playback-start", "Prepare the figures of the statements")
        .button("PRINT", "Trial Balance", "office-report", "Trial balance of a month")
        .button("POST", "Open a Book", "object-unlocked", "Open a closed month of a book again")
        .separator()
        .button("CLOSE", "Close", "document-close", "Leave the ledger");
    tbrGL.onButtonClick = [this](const std::string& key) { tbrGL_ButtonClick(key); };
    mnuEnter.onClick = [this] { OpenPeriod(static_cast<int>(PeriodMode::Prepare)); };
    mnuGeneral_0.onClick = [this] { OpenPeriod(static_cast<int>(PeriodMode::SetGLPeriod)); };
    mnuGeneral_1.onClick = [this] { OpenPeriod(static_cast<int>(PeriodMode::ReopenBook)); };
    mnuBegBal0.onClick = [this] { session_.screens.showModal(session_, "frmBegBalanceYear"); };
    mnuBegBalPeriod.onClick = [this] { session_.screens.showModal(session_, "frmBegBalancePeriod"); };
    mnuBegBal1.onClick = [this] { OpenYear(static_cast<int>(YearMode::PostForwarded)); };
    mnuBegBal2.onClick = [this] { OpenYear(static_cast<int>(YearMode::CloseYear)); };
    mnuBegBal3.onClick = [this] { OpenPeriod(static_cast<int>(PeriodMode::PostBegBal)); };
    mnuBegBalReport.onClick = [this] { OpenYear(static_cast<int>(YearMode::BegBalances)); };
    mnuGLReport.onClick = [this] { OpenYear(static_cast<int>(YearMode::GeneralLedger)); };
    mnuCloseCockpit.onClick = [this] {
        session_.screens.showModal(session_, "frmCloseCockpit");
        ShowState();
    };
    mnuClose.onClick = [this] { Unload(); };
    MenuSpec periods{"Pe&riods", {mnuGeneral_0, mnuGeneral_1}};
    periods.owner = &mnuGeneral;
    setMenu({{"&General Ledger", {mnuEnter, periods, mnuCloseCockpit, nullptr, mnuClose}},
             {"&Balances",
              {mnuBegBal0, mnuBegBalPeriod, mnuBegBal3, nullptr, mnuBegBal1, mnuBegBal2, nullptr, mnuBegBalReport,
               mnuGLReport}},
             buildReports()});
    setToolbar(tbrGL);
    setLayout(column({row({Label1, stretch(), lblPrepared}), expand(group("Months of the books", lvwBooks))}));
    setSize(1180, 520);
}

MenuSpec frmGL::buildReports() {
    MenuSpec reports{"&Reports", {}};
    for (const StatementRow& row : statementRows()) {
        reports_.push_back(std::make_unique<MenuItem>(*this, row.entry, row.caption, kReportIcon,
                                                      std::string_view(row.entry) == kTrialBalance ? "Ctrl+T" : ""));
        MenuItem& item = *reports_.back();
        item.onClick = [this, &row] { RunStatement(session_, row); };
        const bool known = !reports.parts.empty() && reports.parts.back().sub->caption == row.section;
        if (!known) reports.parts.emplace_back(MenuSpec{row.section, {}});
        reports.parts.back().sub->parts.emplace_back(item);
    }
    return reports;
}

/// What the parameters, the user's rights and the client show.
void frmGL::ApplyParameters() {
    const clsParameters& p = session_.Parameters;
    const auto show = [this](const char* name, bool visible) { control(name)->setVisible(visible); };
    show("mnuISRep2", p.Enable_GL_ISRep2());
    show("mnuISRep3", p.Enable_GL_ISRep3());
    show("mnuISRep4", p.Enable_GL_ISRep4());
    show("mnuBS2", p.Enable_GL_BS2());
    const bool auditor = session_.UserAccess.CanAccess("ATL");
    show("mnuAudit", auditor);
    control("mnuAudit")->setEnabled(auditor);
    const bool hzd = session_.ClientCode() == "HZD";
    show("mnuISDailyRevReport", hzd && p.Enable_GL_DailyRevReport());
    show("mnuISCashRecon", hzd && p.Enable_GL_CashRecon());
    show("mnuISCompInc", hzd);
    show("mnuISFinancePos", hzd);
    const bool osqel = session_.ClientCode() == "OSQEL";
    show("mnuISByMonth", osqel);
    show("mnuISExpByMonth", osqel);
}

void frmGL::Form_Load() {
    session_.Parameters.LoadParameters(session_.ClientCode());
    session_.setBookCode("GL");
    Form_Rights();
    ShowState();
}

void frmGL::Form_Rights() {
    const std::string rights = session_.CurrentUser.UserRights();
    mnuGeneral.setEnabled(rights.find('S') != std::string::npos || rights.find('A') != std::string::npos);
    tbrGL.setButtonEnabled("POST", mnuGeneral.enabled());
    ApplyParameters();
}

void frmGL::ShowState() {
    const std::vector<BookState> books = readBookStates(session_.cn(), Today(), kMonthsShown);
    std::vector<ListColumn> columns{{"Book", 26, Align::Left, true}};
    if (!books.empty()) {
        for (const BookMonth& month : books.front().months)
            columns.push_back({shortPeriodName(month.period), 9, Align::Center});
    }
    columns.push_back({"Waiting", 8, Align::Right});
    lvwBooks.setColumns(std::move(columns));
    std::vector<ListView::Item> items;
    for (const BookState& book : books) {
        ListView::Item item{book.code, {book.name}};
        for (const BookMonth& month : book.months) item.cells.emplace_back(month.closed ? "closed" : "open");
        item.cells.push_back(std::to_string(book.pending));
        items.push_back(std::move(item));
    }
    lvwBooks.setItems(std::move(items));
    const Preparation prepared = readPreparation(session_.cn());
    lblPrepared.setText(!prepared.any ? "Statements have not been prepared yet"
                                      : "Prepared for " + periodName(prepared.period) + " on " +
                                            Format(prepared.at, "MM/dd/yyyy HH:nn") +
                                            (prepared.stale ? "; the ledger has changed since" : ""));
}

void frmGL::OpenPeriod(int mode) {
    frmEntPeriod dialog(session_);
    std::string entity;
    dialog.ShowDialog(mode, 0, "", entity);
    ShowState();
}

void frmGL::OpenYear(int mode) {
    frmRepYear(session_).ShowDialog(mode);
    ShowState();
}

void frmGL::tbrGL_ButtonClick(const std::string& key) {
    if (key == "ENTER") OpenPeriod(static_cast<int>(PeriodMode::Prepare));
    if (key == "PRINT") RunStatement(session_, *findStatement(kTrialBalance));
    if (key == "POST") OpenPeriod(static_cast<int>(PeriodMode::ReopenBook));
    if (key == "CLOSE") Unload();
}

}  // namespace kv
