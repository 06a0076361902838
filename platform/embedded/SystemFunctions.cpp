// What is neither text, number nor date: new identifiers, hashes, FORMAT, and the conversions as SQLite calls them.

#include <pwd.h>
#include <sodium.h>

#include <unistd.h>

#include <array>
#include <atomic>
#include <ctime>
#include <random>

#include "platform/embedded/DateTime.h"
#include "platform/embedded/Errors.h"
#include "platform/embedded/FormatFunction.h"
#include "platform/embedded/NumberText.h"
#include "platform/embedded/Udf.h"
#include "platform/embedded/Utf8.h"

namespace kv::tsql {
namespace {

/// cv(value, spec): the parsed conversion stays with the statement, since its text is a constant.
void convertCall(sqlite3_context* context, int count, sqlite3_value** values) {
    guarded(context, [&] {
        Call call(context, count, values);
        auto* kept = static_cast<Conversion*>(sqlite3_get_auxdata(context, 1));
        Conversion own;
        if (!kept) {
            own = conversionOfSpec(call.text(1));
            kept = new Conversion(own);
            sqlite3_set_auxdata(context, 1, kept, [](void* p) { delete static_cast<Conversion*>(p); });
            kept = &own;  // SQLite may have freed the kept one at once
        }
        call.result(converted(call.cell(0), *kept));
    });
}

/// cvs(value, spec, style) with a style known only at run time.
void convertWithStyle(Call& call) {
    if (call.isNull(0) || call.isNull(2)) return call.null();
    Conversion conversion = conversionOfSpec(call.text(1));
    conversion.style = call.small(2);
    call.result(converted(call.cell(0), conversion));
}

void newId(Call& call) {
    static thread_local std::mt19937_64 generator{std::random_device{}()};
    std::array<std::uint8_t, 16> bytes{};
    for (std::size_t half = 0; half < 2; ++half) {
        std::uint64_t random = generator();
        for (std::size_t i = 0; i < 8; ++i, random >>= 8) bytes[half * 8 + i] = static_cast<std::uint8_t>(random);
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
    std::array<char, 36> text{};
    std::size_t at = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text[at++] = '-';
        text[at++] = "0123456789ABCDEF"[bytes[i] >> 4];
        text[at++] = "0123456789ABCDEF"[bytes[i] & 15];
    }
    call.result(std::string_view(text.data(), text.size()));
}

/// t_hash(algorithm, form, value): form 1 hashes text as varchar, 2 as nvarchar, 0 bytes.
void hashBytes(Call& call) {
    if (call.anyNull()) return call.null();
    std::string algorithm(call.text(0));
    for (char& c : algorithm) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    const int form = call.small(1);
    const std::string bytes = form == 1   ? latinOfUtf8(call.text(2))
                              : form == 2 ? utf16OfUtf8(call.text(2))
                                          : std::string(call.blob(2));
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    std::array<unsigned char, crypto_hash_sha512_BYTES> digest{};
    std::size_t size = 0;
    if (algorithm == "sha2_256") {
        crypto_hash_sha256(digest.data(), data, bytes.size());
        size = crypto_hash_sha256_BYTES;
    } else if (algorithm == "sha2_512") {
        crypto_hash_sha512(digest.data(), data, bytes.size());
        size = crypto_hash_sha512_BYTES;
    } else {
        raise(40001, {"HASHBYTES with " + std::string(call.text(0))});
    }
    call.resultBytes({reinterpret_cast<const char*>(digest.data()), size});
}

void hostName(Call& call) {
    std::array<char, 256> name{};
    if (gethostname(name.data(), name.size() - 1) != 0) return call.null();
    call.result(std::string_view(name.data()));
}

/// Who runs the program; the engine has no logins of its own.
void userName(Call& call) {
    const passwd* entry = getpwuid(geteuid());
    call.result(std::string_view(entry ? entry->pw_name : "unknown"));
}

void universalDate(Call& call) {
    const Moment local = storedMoment(call.shared().now());
    const CivilDay day = civilOf(local.days);
    std::tm parts{};
    parts.tm_year = day.year - 1900;
    parts.tm_mon = day.month - 1;
    parts.tm_mday = day.day;
    parts.tm_hour = local.ms / 3'600'000;
    parts.tm_isdst = -1;
    std::mktime(&parts);
    call.result(std::string_view(momentText(Moment::ofTotal(local.total() - parts.tm_gmtoff * 1000LL))));
}

void formatMessageCall(Call& call) {
    if (call.isNull(0)) return call.null();
    std::vector<Datum> arguments;
    for (int i = 1; i < call.count(); ++i) {
        const Cell cell = call.cell(i);
        arguments.push_back(Datum{cell.storage, cell.integer, cell.real, std::string(cell.text)});
    }
    call.result(std::string_view(formatMessage(call.text(0), arguments)));
}

/// t_format(value, pattern, spec of the value's type)
void formatCall(Call& call) {
    if (call.isNull(0) || call.isNull(1)) return call.null();
    const Conversion conversion = conversionOfSpec(call.text(2));
    call.result(std::string_view(formatted(call.cell(0), conversion.from, call.text(1))));
}

/// t_spid(): @@SPID
void sessionIdCall(Call& call) { call.result(call.shared().sessionId); }

constexpr std::array<Udf, 10> kUdfs = {{
    {"cv", 2, true, convertCall},
    {"cvs", 3, true, udf<convertWithStyle>},
    {"newid", 0, false, udf<newId>},
    {"t_hash", 3, true, udf<hashBytes>},
    {"t_hostname", 0, false, udf<hostName>},
    {"t_username", 0, false, udf<userName>},
    {"t_getutcdate", 0, false, udf<universalDate>},
    {"t_formatmessage", -1, true, udf<formatMessageCall>},
    {"t_format", 3, true, udf<formatCall>},
    {"t_spid", 0, true, udf<sessionIdCall>},
}};

}  // namespace

int newSessionId() {
    // A process id has at most 22 bits on Linux; the rest of an int tells the connections of the process apart.
    constexpr int kConnectionBits = 9;
    static std::atomic<int> opened{0};
    return static_cast<int>(getpid()) << kConnectionBits | (opened++ & ((1 << kConnectionBits) - 1));
}

std::span<const Udf> systemUdfs() { return kUdfs; }

}  // namespace kv::tsql
