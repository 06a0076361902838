#include "tools/screenplay/Workstation.h"

#include <algorithm>

#include "app/DialogList.h"
#include "core/BooksCheck.h"
#include "platform/base/Error.h"
#include "platform/base/Paths.h"
#include "platform/base/Text.h"
#include "platform/embedded/Embedded.h"
#include "platform/forms/Form.h"
#include "platform/print/Report.h"
#include "reporting/frmReportViewer.h"

namespace kv {

namespace {

constexpr std::size_t kRowsTold = 3;

std::string told(const Recordset& rows) {
    std::string text;
    for (std::size_t i = 0; i < std::min(rows.recordCount(), kRowsTold); ++i) {
        std::vector<std::string> cells;
        for (std::size_t c = 0; c < rows.fields().size(); ++c) {
            cells.push_back(rows.fields()[c].name + "=" + rows.rows()[i][c].text());
        }
        text += " [" + join(cells, " ") + "]";
    }
    return text;
}

/// The report in the viewer: what a person sees, and the files that a person could have saved.
class ViewedReport : public ShownReport {
public:
    explicit ViewedReport(frmReportViewer& viewer) : viewer_(viewer) {}
    std::string title() const override { return viewer_.ReportCaption(); }
    std::string text() const override {
        viewer_.crvReport.finishLayout();
        std::string all;
        for (int page = 1; page <= viewer_.crvReport.pages(); ++page) all += viewer_.crvReport.pageText(page) + "\n";
        return all;
    }
    void save(const std::string& path) override {
        Report& report = viewer_.report();
        const std::string ending = LCase(path.substr(path.find_last_of('.') + 1));
        if (ending == "pdf") {
            report.savePdf(path);
        } else if (ending == "xlsx") {
            report.saveXlsx(path);
        } else if (ending == "csv") {
            report.saveCsv(path);
        } else if (ending == "txt") {
            writeTextFile(path, report.text());
        } else if (ending == "png") {
            savePageOne(report, path);
        } else {
            throw Error(5, "screenplay", "A report is not saved as ." + ending);
        }
    }

private:
    static void savePageOne(Report& report, const std::string& path) {
        report.layout();
        Document first = report.document();
        first.pages.resize(1);
        writePng(first, path.substr(0, path.size() - 4));
    }
    frmReportViewer& viewer_;
};

/// The viewer on top: one report may open another.
frmReportViewer* openViewer() {
    const std::vector<Form*> forms = Form::openForms();
    for (auto form = forms.rbegin(); form != forms.rend(); ++form) {
        if (auto* viewer = dynamic_cast<frmReportViewer*>(*form)) return viewer;
    }
    return nullptr;
}

}  // namespace

bool Workstation::start() {
    Program::Options options;
    options.dataFile = dataFile_;
    options.settingsFile.clear();
    options.makeDemo = false;
    program_ = std::make_unique<Program>(options);
    program_->onConnected = [this](Connection& connection) { connection.observe(listener_); };
    return program_->Main();
}

std::unique_ptr<Connection> Workstation::connect() {
    EmbeddedOptions options;
    options.file = dataFile_;
    options.create = false;
    return openEmbedded(options);
}

ShownReport* Workstation::report() {
    frmReportViewer* viewer = openViewer();
    if (!viewer) return nullptr;
    report_ = std::make_unique<ViewedReport>(*viewer);
    return report_.get();
}

std::optional<std::vector<std::string>> Workstation::ask(const std::string& dialog, std::vector<std::string> values) {
    if (!askDialog(program_->session(), dialog, values)) return std::nullopt;
    return values;
}

std::vector<std::string> Workstation::unsound() {
    std::vector<std::string> wrong;
    const std::unique_ptr<Connection> connection = connect();
    for (const BooksCheck& check : booksChecks()) {
        try {
            const Recordset rows = connection->Open(check.query);
            if (!rows.empty()) wrong.push_back("not so: " + check.title + told(rows));
        } catch (const Error& error) {
            wrong.push_back(check.name + ": " + error.description);
        }
    }
    return wrong;
}

}  // namespace kv
