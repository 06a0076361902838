// The report engine beside the bare toolkit in the same run: a ledger of 500 pages against a plain loop that draws as
// many texts into a PDF, and a spreadsheet of 100,000 rows against the spreadsheet library by itself.
#include <xlsxwriter.h>
#include <QPainter>
#include <QPdfWriter>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>

#include "platform/base/Text.h"
#include "platform/forms/Application.h"
#include "platform/print/Report.h"

namespace {

using namespace kv;

constexpr int kAccounts = 100, kLines = 250, kSheetRows = 100'000;

double seconds(const std::function<void()>& body) {
    const auto from = std::chrono::steady_clock::now();
    body();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - from).count();
}

ResultSet ledger(int accounts, int lines) {
    ResultSet set;
    const std::pair<const char*, DataType> fields[] = {
        {"Code", DataType::VarChar},     {"Title", DataType::VarChar},      {"Kind", DataType::Integer},
        {"Period", DataType::VarChar},   {"BatchDate", DataType::DateTime}, {"BatchType", DataType::VarChar},
        {"Batch", DataType::VarChar},    {"Dept", DataType::VarChar},       {"Description", DataType::VarChar},
        {"Opening", DataType::Currency}, {"Debit", DataType::Currency},     {"Credit", DataType::Currency}};
    for (const auto& [name, type] : fields) set.fields.push_back({name, type, 0, 0});
    for (int a = 0; a < accounts; ++a) {
        for (int n = 0; n < lines; ++n) {
            const Money amount = Money::fromUnits(12'345LL * (n + 1) + a);
            set.rows.push_back({std::to_string(1001 + a), "Cash on hand", n == 0 ? 0 : 1, "202403",
                                Date(2024, 3, 1 + n % 31), "JV", std::to_string(n), "", "Entry " + std::to_string(n),
                                n == 0 ? amount : Money(), n % 2 == 1 ? amount : Money(),
                                n % 2 == 0 && n > 0 ? amount : Money()});
        }
    }
    return set;
}

std::unique_ptr<Report> ledgerReport(ResultSet rows) {
    auto report = Report::load("Reports/ReportGLDetailed_Ver2.rpt");
    for (const char* name : {"@Code", "Hospital", "Address", "Range"}) report->setValue(name, "EXAMPLE");
    report->setValue("@Period1", "202403");
    report->setValue("@Period2", "202403");
    report->setRows("main", std::move(rows));
    report->runOnRows();
    return report;
}

/// As many texts a page as the ledger has, drawn by the toolkit alone.
void plainPdf(const std::string& file, const Document& like) {
    QPdfWriter writer(QString::fromStdString(file));
    writer.setResolution(1200);
    writer.setPageSize(QPageSize(QPageSize::A4));
    QPainter painter(&writer);
    QFont font("Noto Sans");
    font.setPointSizeF(8.5);
    painter.setFont(font);
    const double mm = 1200 / 25.4;
    for (std::size_t p = 0; p < like.pages.size(); ++p) {
        if (p > 0) writer.newPage();
        for (const TextRun& run : like.pages[p].runs) {
            painter.drawText(QRectF(run.x * mm, run.y * mm, run.width * mm, run.height * mm),
                             Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, QString::fromStdString(run.text));
        }
    }
}

void plainXlsx(const std::string& file, const ResultSet& rows) {
    lxw_workbook_options options{};
    options.constant_memory = 1;
    lxw_workbook* book = workbook_new_opt(file.c_str(), &options);
    lxw_worksheet* sheet = workbook_add_worksheet(book, nullptr);
    for (std::size_t r = 0; r < rows.rows.size(); ++r) {
        const auto line = static_cast<lxw_row_t>(r);
        const Row& row = rows.rows[r];
        worksheet_write_number(sheet, line, 0, static_cast<double>(row[4].date().msSince1900()), nullptr);
        worksheet_write_string(sheet, line, 1, row[6].text().c_str(), nullptr);
        worksheet_write_string(sheet, line, 2, row[8].text().c_str(), nullptr);
        worksheet_write_number(sheet, line, 3, row[10].number(), nullptr);
        worksheet_write_number(sheet, line, 4, row[11].number(), nullptr);
        worksheet_write_number(sheet, line, 5, row[9].number(), nullptr);
    }
    workbook_close(book);
}

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const Application application(argc, argv);
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "kv_bench_print";
    std::filesystem::create_directories(folder);
    const auto file = [&](const char* name) { return (folder / name).string(); };

    std::unique_ptr<Report> report;
    const double first = seconds([&] {
        report = ledgerReport(ledger(kAccounts, kLines));
        while (report->pages() == 0 && report->layoutFor(1)) {
        }
    });
    const double rest = seconds([&] { report->layout(); });
    const double draw = seconds([&] { report->savePdf(file("ledger.pdf")); });
    const int pages = report->pages();
    const double plain = seconds([&] { plainPdf(file("plain.pdf"), report->document()); });
    std::printf("ledger of %d pages, %d rows\n", pages, kAccounts * kLines);
    std::printf("  template, rows, totals and page 1     %8.0f ms   (goal: under 1000)\n", first * 1000);
    std::printf("  layout of the rest                    %8.0f pages/s\n", pages / rest);
    std::printf("  PDF of the laid-out pages             %8.0f pages/s\n", pages / draw);
    std::printf("  plain toolkit loop, the same texts    %8.0f pages/s\n", pages / plain);
    std::printf("  all of it over the plain loop         %8.2f times\n", (first + rest + draw) / plain);

    const ResultSet rows = ledger(kSheetRows / kLines, kLines);
    auto sheet = ledgerReport(rows);
    const double typed = seconds([&] { sheet->saveXlsx(file("rows.xlsx"), XlsxKind::Tabular); });
    const double bare = seconds([&] { plainXlsx(file("plain.xlsx"), rows); });
    const double csv = seconds([&] { sheet->saveCsv(file("rows.csv")); });
    std::printf("spreadsheet of %d rows, 7 columns\n", kSheetRows);
    std::printf("  xlsx                                  %8.2f s\n", typed);
    std::printf("  spreadsheet library by itself         %8.2f s\n", bare);
    std::printf("  xlsx over the library                 %8.2f times\n", typed / bare);
    std::printf("  csv                                   %8.2f s\n", csv);
    std::filesystem::remove_all(folder);
    return 0;
}
