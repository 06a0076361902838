#include "core/clsParameters.h"

#include <functional>
#include <unordered_map>

#include "core/module1.h"
#include "platform/base/Text.h"

namespace kv {

void clsParameters::take(std::string_view code, std::string_view stored) {
    using Taker = void (*)(Values&, std::string_view);
    static const std::unordered_map<std::string, Taker> takers = {
#define KV_FLAG(key, property, initial) {key, [](Values& v, std::string_view text) { v.property = text == "Y"; }},
#define KV_NUMBER(key, property, initial)                                                          \
    {key, [](Values& v, std::string_view text) {                                                   \
         v.property = static_cast<short>(static_cast<long long>(module1::Value(text).toDouble())); \
     }},
#define KV_TEXT(key, property, initial) {key, [](Values& v, std::string_view text) { v.property = text; }},
#define KV_FORMAT(key, property, initial)        \
    {key, [](Values& v, std::string_view text) { \
         if (!text.empty()) v.property = text;   \
     }},
#include "core/Parameters.def"
#undef KV_FLAG
#undef KV_NUMBER
#undef KV_TEXT
#undef KV_FORMAT
    };
    const std::string key = UCase(code);
    stored_[key] = stored;
    if (const auto found = takers.find(key); found != takers.end()) found->second(values_, stored);
}

void clsParameters::reset() {
    values_ = Values();
    stored_.clear();
}

std::string clsParameters::textOf(std::string_view code) const {
    using Giver = std::string (*)(const Values&);
    static const std::unordered_map<std::string, Giver> givers = {
#define KV_FLAG(key, property, initial) {key, [](const Values& v) { return std::string(v.property ? "Y" : "N"); }},
#define KV_NUMBER(key, property, initial) {key, [](const Values& v) { return std::to_string(v.property); }},
#define KV_TEXT(key, property, initial) {key, [](const Values& v) { return v.property; }},
#define KV_FORMAT(key, property, initial) KV_TEXT(key, property, initial)
#include "core/Parameters.def"
#undef KV_FLAG
#undef KV_NUMBER
#undef KV_TEXT
#undef KV_FORMAT
    };
    const std::string key = UCase(code);
    if (const auto found = givers.find(key); found != givers.end()) return found->second(values_);
    const auto stored = stored_.find(key);
    return stored == stored_.end() ? std::string() : stored->second;
}

void clsParameters::LoadParameters(std::string_view ClientCode, std::source_location at) {
    traced("clsParameters.LoadParameters", at, [&] {
        reset();
        Recordset rows = connection_.Open("select * from ACCOUNTING..PARAMETERS where (Client = '" +
                                          std::string(ClientCode) + "' OR ISNULL(Client, '') = '')");
        for (; !rows.eof(); rows.moveNext()) take(rows["Code"].text(), rows["ParamValue"].text());
        fillFromOtherTables();
    });
}

void clsParameters::fillFromOtherTables() {
    const Recordset sys = connection_.Open("select * from sys");
    if (!sys.eof()) {
        values_.VerifiedBy = sys["VerifiedBy"].text();
        values_.ApprovedBy = sys["ApprovedBy"].text();
    }
    const auto fill = [&](std::string& property, std::string_view statement) {
        if (!property.empty()) return;
        const Recordset row = connection_.Open(statement);
        if (!row.eof()) property = row["Code"].text();
    };
    fill(values_.DrPayableCode, "SELECT CashAcct as Code FROM RevenueCode WHERE RevenueID = 'MD'");
    fill(values_.DrWTaxCode, "SELECT WTAX as Code FROM SYS");
}

void clsParameters::UpdateParameters(std::string_view Code, std::string_view NewValue, std::string_view Description,
                                     std::source_location at) {
    traced("clsParameters.UpdateParameters", at, [&] {
        connection_.Execute("sp_Update_Parameters '" + std::string(Code) + "','" + module1::SQLString(NewValue) +
                            "','" + module1::SQLString(Description) + "'");
    });
}

}  // namespace kv
