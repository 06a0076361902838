// bench_reporting: search dialogs over 20,000 rows, typed into: from the text to the painted
// list, beside the same question to raw SQLite in the same run. Medians and the slowest, in milliseconds of processor
// time.

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <vector>

#include "platform/base/Text.h"
#include "platform/data/Statement.h"
#include "platform/forms/Application.h"
#include "platform/forms/Dialogs.h"
#include "reporting/frmSearchAcct.h"
#include "reporting/frmSearchVend.h"
#include "tests/desk/Desk.h"

namespace {

constexpr int kRows = 20'000;
constexpr int kRounds = 25;
constexpr const char* kTyped[] = {"", "C", "CE", "CEDAR", "CEDAR 1", "CEDAR 12", "SUPPLY", "12"};
constexpr const char* kWords[] = {"ALDER", "BIRCH", "CEDAR", "DOGWOOD", "ELM", "FIR", "GINKGO", "HAZEL"};

double msSince(std::clock_t start) { return 1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC; }

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

std::string nameOf(int i) {
    return std::string(kWords[i % 8]) + " " + std::to_string(i) + " MEDICAL SUPPLY AND EQUIPMENT";
}

void fill(kv::Connection& cn) {
    cn.BeginTrans();
    for (int i = 0; i < kRows; ++i) {
        cn.Execute(
            kv::sql("INSERT INTO INVENTORY..tbInvSupplier (SupplierID, SupplierName, Status) VALUES ('{}', '{}', 'A')")
                .text("S" + std::to_string(i))
                .text(nameOf(i)));
        cn.Execute(kv::sql("INSERT INTO AcctCode (Code, Description, Type) VALUES ('{}', '{}', 'AS')")
                       .text("S" + std::to_string(i))
                       .text(nameOf(i)));
    }
    cn.CommitTrans();
}

/// The same rows in plain SQLite: a question is prepared as a client sends it, and each row's texts are copied.
class Raw {
public:
    Raw() {
        sqlite3_open(":memory:", &db_);
        run("CREATE TABLE s (Code TEXT PRIMARY KEY COLLATE NOCASE, Name TEXT COLLATE NOCASE, Status TEXT COLLATE "
            "NOCASE)");
        run("CREATE INDEX s_name ON s (Name)");
        run("BEGIN");
        for (int i = 0; i < kRows; ++i) {
            run(("INSERT INTO s VALUES ('S" + std::to_string(i) + "', '" + nameOf(i) + "', 'A')").c_str());
        }
        run("COMMIT");
    }
    Raw(const Raw&) = delete;
    Raw& operator=(const Raw&) = delete;
    ~Raw() { sqlite3_close(db_); }
    std::size_t find(const std::string& question) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(db_, question.c_str(), -1, &statement, nullptr);
        std::vector<std::vector<std::string>> rows;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            std::vector<std::string> cells;
            for (int c = 0; c < sqlite3_column_count(statement); ++c) {
                cells.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, c)));
            }
            rows.push_back(std::move(cells));
        }
        sqlite3_finalize(statement);
        return rows.size();
    }

private:
    void run(const char* text) {
        if (sqlite3_exec(db_, text, nullptr, nullptr, nullptr) != SQLITE_OK) std::exit(1);
    }
    sqlite3* db_ = nullptr;
};

struct Figures {
    std::vector<double> whole, statement, raw;
    std::size_t rows = 0;
};

/// Types each text into the dialog; `question` is the same in plain SQLite with "##" for the text.
void measure(const char* what, kv::Desk& desk, kv::SearchDialog& dialog, Raw& raw, const std::string& question) {
    std::vector<Figures> figures(std::size(kTyped));
    kv::dialogHooks().modal = [&](kv::Form& form) {
        for (int round = 0; round < kRounds; ++round) {
            for (std::size_t t = 0; t < std::size(kTyped); ++t) {
                Figures& f = figures[t];
                dialog.txtSearchStr.setText("-");
                form.Refresh();
                auto start = std::clock();
                dialog.txtSearchStr.setText(kTyped[t]);
                form.Refresh();
                f.whole.push_back(msSince(start));
                start = std::clock();
                f.rows = desk.cn().Open(kv::searchStatement(dialog.Query, dialog.Criteria, kTyped[t])).recordCount();
                f.statement.push_back(msSince(start));
                start = std::clock();
                const std::size_t same = raw.find(kv::replaceAll(question, "##", kTyped[t]));
                f.raw.push_back(msSince(start));
                if (same != f.rows) std::printf("%s %s: %zu rows, raw %zu\n", what, kTyped[t], f.rows, same);
            }
        }
        form.Unload();
    };
    dialog.ShowDialog();
    std::printf("%s\n%-10s %7s %20s %10s %10s %14s\n", what, "typed", "rows", "key to list (most)", "statement", "raw",
                "statement:raw");
    for (std::size_t t = 0; t < std::size(kTyped); ++t) {
        const Figures& f = figures[t];
        std::printf("%-10s %7zu %10.2f (%6.2f) %10.2f %10.2f %14.2f\n", kTyped[t], f.rows, median(f.whole),
                    *std::max_element(f.whole.begin(), f.whole.end()), median(f.statement), median(f.raw),
                    median(f.statement) / median(f.raw));
    }
}

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const kv::Application application(argc, argv);
    kv::Desk desk(kv::freshHospital(kv::scratchFolder()));
    fill(desk.cn());
    Raw raw;
    kv::frmSearchVend vendors(desk.session());
    vendors.SetMode("I", true);
    measure("suppliers by the beginning of their name", desk, vendors, raw,
            "SELECT Name, Code FROM s WHERE Name LIKE '##%' AND Status = 'A'");
    desk.cn().Execute("DELETE FROM AcctCode WHERE Code NOT LIKE 'S%'");
    kv::frmSearchAcct accounts(desk.session());
    accounts.Query = "sp_Search_Acct '0','##','ALL'";
    measure("accounts by the beginning of the code or any part of the title", desk, accounts, raw,
            "SELECT Name, Code, Status FROM s WHERE Code LIKE '##%' OR Name LIKE '%##%' ORDER BY Name, Code");
    return 0;
}
