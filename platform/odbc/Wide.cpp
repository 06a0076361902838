#include "platform/odbc/Wide.h"

#include <cstdint>

namespace kv::odbc {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

/// Reads the character at `at` and moves behind it.
std::uint32_t nextPoint(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) return lead;
    const int more = lead >= 0xC2 && lead <= 0xDF   ? 1
                     : (lead & 0xF0) == 0xE0        ? 2
                     : lead >= 0xF0 && lead <= 0xF4 ? 3
                                                    : 0;
    if (more == 0) return kReplacement;
    std::uint32_t point = lead & (0x3Fu >> more);
    std::size_t next = at;
    for (int i = 0; i < more; ++i, ++next) {
        if (next >= text.size() || (static_cast<unsigned char>(text[next]) & 0xC0) != 0x80) return kReplacement;
        point = point << 6 | (static_cast<unsigned char>(text[next]) & 0x3Fu);
    }
    const bool overlong = (more == 2 && point < 0x800) || (more == 3 && point < 0x10000);
    if (overlong || point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF)) return kReplacement;
    at = next;
    return point;
}

void appendUtf8(std::string& out, std::uint32_t point) {
    const auto add = [&out](std::uint32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (point < 0x80) {
        add(point);
    } else if (point < 0x800) {
        add(0xC0 | point >> 6);
        add(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        add(0xE0 | point >> 12);
        add(0x80 | (point >> 6 & 0x3F));
        add(0x80 | (point & 0x3F));
    } else {
        add(0xF0 | point >> 18);
        add(0x80 | (point >> 12 & 0x3F));
        add(0x80 | (point >> 6 & 0x3F));
        add(0x80 | (point & 0x3F));
    }
}

}  // namespace

SQLRETURN execute(SQLHSTMT statement, std::string_view text, Carrier carrier) {
    if (carrier == Carrier::Utf16) {
        std::vector<SQLWCHAR> wide = toWide(text);
        return SQLExecDirectW(statement, wide.data(), static_cast<SQLINTEGER>(wide.size()));
    }
    std::string narrow(text);
    return SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(narrow.data()), static_cast<SQLINTEGER>(narrow.size()));
}

std::vector<SQLWCHAR> toWide(std::string_view text) {
    std::vector<SQLWCHAR> out;
    out.reserve(text.size() + 1);
    for (std::size_t at = 0; at < text.size();) {
        const std::uint32_t point = nextPoint(text, at);
        if (point < 0x10000) {
            out.push_back(static_cast<SQLWCHAR>(point));
        } else {
            out.push_back(static_cast<SQLWCHAR>(0xD800 + ((point - 0x10000) >> 10)));
            out.push_back(static_cast<SQLWCHAR>(0xDC00 + ((point - 0x10000) & 0x3FF)));
        }
    }
    return out;
}

std::string fromWide(const SQLWCHAR* text, std::size_t length) {
    std::string out;
    out.reserve(length);
    for (std::size_t i = 0; i < length; ++i) {
        const std::uint32_t unit = text[i];
        const bool high = unit >= 0xD800 && unit <= 0xDBFF;
        if (high && i + 1 < length && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            appendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00u));
            ++i;
        } else {
            appendUtf8(out, unit >= 0xD800 && unit <= 0xDFFF ? kReplacement : unit);
        }
    }
    return out;
}

}  // namespace kv::odbc
