// Any text as a number, a number format, a message format or a LIKE pattern: values read back, and only known errors
// come.

#include <cmath>
#include <cstdint>
#include <optional>

#include "platform/base/Error.h"
#include "platform/base/Text.h"
#include "platform/embedded/Collation.h"
#include "platform/embedded/Conversions.h"
#include "platform/embedded/Errors.h"
#include "platform/embedded/FormatFunction.h"
#include "platform/embedded/Like.h"
#include "platform/embedded/NumberText.h"
#include "platform/embedded/SqlError.h"
#include "tests/fuzz/Fuzz.h"

namespace {

using namespace kv::tsql;
using kv::fuzz::hold;

std::optional<Datum> tried(std::string_view text, const Type& to) {
    try {
        return convertDatum(Datum::of(std::string(text)), Type::varchar(kMaxLength), to, ConvertMode::Cast);
    } catch (const SqlError& error) {
        const bool known = error.number == 245 || error.number == 248 || error.number == 244 || error.number == 8114 ||
                           error.number == 8115 || error.number == 235 || error.number == 232;
        hold(known, "only conversion errors", text);
        return std::nullopt;
    }
}

void engineNumbers(std::string_view text) {
    const Type types[] = {Type::integer(),      Type::bigint(), Type::decimal(18, 4), Type::decimal(9, 2),
                          Type::decimal(18, 0), Type::money(),  Type::floating()};
    for (const Type& type : types) {
        const auto value = tried(text, type);
        if (!value) continue;
        const std::string shown = consoleText(*value, type);
        hold(tried(shown, type) == value, "a number's text reads back", std::string(text) + " -> " + shown);
        hold(looksNumeric(text) || trimmed(text).empty(), "what converts is numeric", text);
    }
}

void baseNumbers(std::string_view text, std::string_view pattern) {
    const double value = kv::numberOf(text);
    try {
        if (auto money = kv::Money::parse(text)) {
            hold(kv::Money::parse(kv::Format(*money, "0.0000")) == money, "money reads back", text);
        }
        if (!std::isfinite(value)) return;
        hold(kv::numberOf(kv::plainText(value)) == value, "a double's plain text reads back", text);
        kv::Format(value, pattern);
        kv::Format(kv::Money::fromDouble(std::fmod(value, 1e9)), pattern);
    } catch (const kv::Error& error) {
        hold(error.number == kv::kErrOverflow, "only overflow", text);
    }
}

void patterns(std::string_view text, std::string_view pattern) {
    const bool matches = likeMatches(text, pattern);
    const bool plain = pattern.find_first_of("%_[") == std::string_view::npos;
    if (plain && matches) hold(equalTexts(text, pattern), "a plain pattern matches only itself", text);
    hold(compareTexts(text, pattern) == -compareTexts(pattern, text), "the order is the same from both sides", text);
    hold(compareTexts(text, text) == 0, "a text equals itself", text);
    try {
        formatMessage(pattern, {Datum::of(std::string(text)), Datum::of(std::int64_t{7}), Datum::null()});
    } catch (const SqlError& error) {
        hold(error.number == 2786 || error.number == 2787, "only message format errors", pattern);
    }
    try {
        formatted(Cell{Storage::Real, 0, 1234.5, {}}, Type::money(), pattern);
    } catch (const SqlError& error) {
        hold(error.number == 40001, "FORMAT refuses what it does not know", pattern);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 400) return 0;
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string_view text = kv::fuzz::cutLine(input);
    engineNumbers(text);
    baseNumbers(text, input);
    patterns(text, input);
    return 0;
}
