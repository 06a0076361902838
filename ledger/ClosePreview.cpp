#include "ledger/ClosePreview.h"

#include "core/module1.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

std::string counted(int count, const char* one, const char* many) {
    return Format(count, "#,##0") + " " + (count == 1 ? one : many);
}

}  // namespace

ClosePreview readClosePreview(Connection& cn, std::string_view book, std::string_view period) {
    ClosePreview preview;
    preview.closed = !module1::IsBookOpen(cn, book, period);
    Recordset rows = cn.Open(call("sp_Load_ClosePreview").separator(",").text(book).text(period));
    for (; !rows.eof(); rows.moveNext()) {
        PreviewBatch one;
        one.batch = rows["Batch"].text();
        one.display = rows["DisplayBatch"].text();
        if (!rows["BatchDate"].isNull()) one.date = Format(rows["BatchDate"].date(), "yyyy-MM-dd");
        one.particular = rows["Particular"].text();
        one.debit = rows["Debit"].money();
        one.credit = rows["Credit"].money();
        one.posted = rows["Posted"].boolean();
        one.trouble = rows["Trouble"].text();
        preview.debit += one.debit;
        preview.credit += one.credit;
        preview.unbalanced += one.trouble == "unbalanced" ? 1 : 0;
        preview.unposted += one.trouble == "not posted" ? 1 : 0;
        preview.batches.push_back(std::move(one));
    }
    return preview;
}

std::string totalsText(const ClosePreview& preview) {
    return counted(static_cast<int>(preview.batches.size()), "batch", "batches") + ", debit " +
           Format(preview.debit, "#,##0.00") + ", credit " + Format(preview.credit, "#,##0.00");
}

std::string troubleText(const ClosePreview& preview) {
    std::string text;
    if (preview.unbalanced > 0) {
        text = counted(preview.unbalanced, "batch does not balance", "batches do not balance");
    }
    if (preview.unposted > 0) {
        text += (text.empty() ? "" : ", ") + counted(preview.unposted, "batch is not posted", "batches are not posted");
    }
    if (!text.empty()) return text + ": the close will be refused.";
    return preview.closed ? "The month is closed: closing it again replaces what the ledger holds." : "";
}

const std::vector<ListColumn>& previewColumns() {
    static const std::vector<ListColumn> columns = {{"Batch", 15},
                                                    {"Date", 11},
                                                    {"Particulars", 38, Align::Left, true},
                                                    {"Debit", 15, Align::Right},
                                                    {"Credit", 15, Align::Right},
                                                    {"State", 12}};
    return columns;
}

std::vector<ListView::Item> previewItems(const ClosePreview& preview, std::string_view book) {
    std::vector<ListView::Item> items;
    items.reserve(preview.batches.size());
    for (const PreviewBatch& one : preview.batches) {
        ListView::Item item{
            std::string(book) + " " + one.batch,
            {one.display, one.date, one.particular, Format(one.debit, "#,##0.00"), Format(one.credit, "#,##0.00"),
             !one.trouble.empty() ? one.trouble
             : one.posted         ? "posted"
                                  : "entered"}};
        item.icon = one.trouble.empty() ? "" : "flag";
        items.push_back(std::move(item));
    }
    return items;
}

}  // namespace kv
