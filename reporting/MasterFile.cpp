#include "reporting/MasterFile.h"

#include <algorithm>

#include "platform/base/Date.h"
#include "platform/base/Text.h"
#include "platform/data/Statement.h"

namespace kv {
namespace {

/// One pass, so that a place in a key's own text stays what it is.
std::string filled(std::string_view pattern, const MasterKey& key, std::string (*as)(std::string_view)) {
    std::string text;
    while (!pattern.empty()) {
        std::size_t taken = 0;
        for (std::size_t i = 0; i < key.size() && taken == 0; ++i) {
            const std::string place = i == 0 ? "{key}" : "{key" + std::to_string(i + 1) + "}";
            if (!pattern.starts_with(place)) continue;
            text += as(key[i]);
            taken = place.size();
        }
        if (taken == 0) {
            text += pattern.front();
            taken = 1;
        }
        pattern.remove_prefix(taken);
    }
    return text;
}

std::string quoted(std::string_view value) { return "'" + SQLString(value) + "'"; }

bool isWhole(std::string_view text) { return IsNumeric(text) && text.find('.') == std::string_view::npos; }

std::string numberArgument(std::string_view value) {
    return trimBlanks(value).empty() ? "NULL" : plainText(numberOf(value));
}

}  // namespace

MasterSays masterSays(const std::string& name) {
    MasterSays says;
    says.remove = name + " : {key} will be permanently deleted from the list. Are you sure you want to do this?";
    return says;
}

MasterLogs masterLogs(const std::string& name) {
    return {
        .selected = "Selected " + name + ": {key}",
        .created = "Created File Maintenance | " + name + ": {key}",
        .edited = "Edited File Maintenance | " + name + ": {key}",
        .ignored = "Ignore changes in File Maintenance | " + name + ": {key}",
        .removed = "Deleted File Maintenance | " + name + " : {key}",
        .retired = "Set File Maintenance | " + name + " : {key} as INACTIVE",
        .closed = "Close File Maintenance | " + name,
    };
}

std::string masterStatement(std::string_view pattern, const MasterKey& key) {
    return filled(pattern, key, [](std::string_view value) { return SQLString(value); });
}

std::string masterText(std::string_view pattern, const MasterKey& key) {
    return filled(pattern, key, [](std::string_view value) { return std::string(value); });
}

std::string masterLog(std::string_view pattern, const MasterKey& key) {
    return filled(pattern, key, [](std::string_view value) { return escaped(value); });
}

std::string masterRefusal(const MasterField& field, std::string_view value) {
    const std::string_view text = trimBlanks(value);
    if (text.empty()) return field.needed;
    const auto said = [&](const char* usual) { return field.refusal.empty() ? std::string(usual) : field.refusal; };
    if (field.kind == MasterKind::Whole && !isWhole(text)) return said("Please enter a whole number.");
    if (field.kind == MasterKind::Decimal && !IsNumeric(text)) return said("Please enter a number.");
    if (field.kind == MasterKind::Date && !IsDate(text)) return said("Please enter a valid date.");
    return {};
}

std::string masterArgument(const MasterField& field, std::string_view value) {
    switch (field.kind) {
        case MasterKind::Whole:
        case MasterKind::Decimal:
            return numberArgument(value);
        case MasterKind::Date:
            return trimBlanks(value).empty() ? "NULL" : quoted(Format(CDate(value), "yyyy-MM-dd"));
        case MasterKind::Fixed:
            return field.standard;
        default:
            return quoted(value);
    }
}

std::string masterUpdate(const MasterFile& file, const MasterValues& values) {
    std::vector<const MasterField*> fields;
    for (const MasterField& field : file.fields) fields.push_back(&field);
    if (!file.save.order.empty()) {
        const auto place = [&](const MasterField* field) {
            return std::find(file.save.order.begin(), file.save.order.end(), field->control);
        };
        std::stable_sort(fields.begin(), fields.end(),
                         [&](const MasterField* a, const MasterField* b) { return place(a) < place(b); });
    }
    std::vector<std::string> arguments;
    for (const MasterField* field : fields) {
        const auto value = values.find(field->control);
        const std::string argument = masterArgument(*field, value == values.end() ? field->standard : value->second);
        arguments.push_back(field->parameter.empty() ? argument : field->parameter + "=" + argument);
    }
    return file.save.procedure + " " + join(arguments, file.save.separator);
}

}  // namespace kv
