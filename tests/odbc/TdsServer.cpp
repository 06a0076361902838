#include "tests/odbc/TdsServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

#include "platform/odbc/Wide.h"

namespace kv::test {
namespace {

constexpr char kBatch = 0x01;
constexpr char kReply = 0x04;
constexpr char kAttention = 0x06;
constexpr char kLogin = 0x10;
constexpr char kPrelogin = 0x12;
constexpr std::size_t kPacketMax = 4096;
constexpr std::size_t kHeader = 8;

template <class Whole>
std::string little(Whole value, std::size_t bytes = sizeof(Whole)) {
    std::string out;
    for (std::size_t i = 0; i < bytes; ++i) {
        out += static_cast<char>(static_cast<unsigned long long>(value) >> (8 * i) & 0xFF);
    }
    return out;
}

std::string wide(const std::string& ascii) {
    std::string out;
    for (const char c : ascii) {
        out += c;
        out += '\0';
    }
    return out;
}

std::string shortText(const std::string& ascii) {
    return little<unsigned char>(static_cast<unsigned char>(ascii.size())) + wide(ascii);
}

const std::string kCollation("\x09\x04\xD0\x00\x34", 5);

/// How a column of a type is described.
std::string typeInfo(const std::string& type) {
    static const std::map<std::string, std::string> kInfo = {
        {"int", "\x26\x04"},
        {"bigint", "\x26\x08"},
        {"bit", "\x68\x01"},
        {"money", "\x6E\x08"},
        {"decimal(9,6)", std::string("\x6A\x05\x09\x06", 4)},
        {"decimal(18,0)", std::string("\x6A\x09\x12\x00", 4)},
        {"datetime", "\x6F\x08"},
        {"date", "\x28"},
        {"float", "\x6D\x08"},
        {"uniqueidentifier", "\x24\x10"},
        {"varchar(50)", std::string("\xA7\x32\x00", 3) + kCollation},
        {"nvarchar(50)", std::string("\xE7\x64\x00", 3) + kCollation},
        {"varchar(max)", std::string("\xA7\xFF\xFF", 3) + kCollation},
    };
    return kInfo.at(type);
}

}  // namespace

TdsAnswer& TdsAnswer::message(char token, int number, int state, int severity, const std::string& text,
                              const std::string& procedure, int line) {
    std::string body = little(number) + little<unsigned char>(static_cast<unsigned char>(state)) +
                       little<unsigned char>(static_cast<unsigned char>(severity)) +
                       little<unsigned short>(static_cast<unsigned short>(text.size())) + wide(text) +
                       shortText("BOOKS") + shortText(procedure) + little(line);
    bytes_ += token + little<unsigned short>(static_cast<unsigned short>(body.size())) + body;
    return *this;
}

TdsAnswer& TdsAnswer::error(int number, int state, int severity, const std::string& text, const std::string& procedure,
                            int line) {
    return message('\xAA', number, state, severity, text, procedure, line);
}

TdsAnswer& TdsAnswer::info(int number, const std::string& text) { return message('\xAB', number, 1, 0, text, "", 1); }

TdsAnswer& TdsAnswer::done(bool more, long rows, bool failed) {
    const int status = (more ? 1 : 0) | (failed ? 2 : 0) | (rows >= 0 ? 0x10 : 0);
    bytes_ += '\xFD' + little<unsigned short>(static_cast<unsigned short>(status)) + little<unsigned short>(0xC1) +
              little<long long>(rows < 0 ? 0 : rows);
    return *this;
}

TdsAnswer& TdsAnswer::columns(const std::vector<std::pair<std::string, std::string>>& namesAndTypes) {
    types_.clear();
    bytes_ += '\x81' + little<unsigned short>(static_cast<unsigned short>(namesAndTypes.size()));
    for (const auto& [name, type] : namesAndTypes) {
        bytes_ += little(0) + little<unsigned short>(0x0009) + typeInfo(type) + shortText(name);
        types_.push_back(type);
    }
    return *this;
}

TdsAnswer& TdsAnswer::row() {
    bytes_ += '\xD1';
    column_ = 0;
    return *this;
}

const std::string& TdsAnswer::nextType() { return types_.at(column_++); }

TdsAnswer& TdsAnswer::nothing() {
    const std::string& type = nextType();
    const bool max = type == "varchar(max)";
    const bool text = type.find("char") != std::string::npos;
    bytes_ += max ? std::string(8, '\xFF') : text ? std::string(2, '\xFF') : std::string(1, '\0');
    return *this;
}

TdsAnswer& TdsAnswer::number(long long value) {
    const std::string& type = nextType();
    const std::size_t size = type == "bit" ? 1 : type == "bigint" ? 8 : 4;
    bytes_ += static_cast<char>(size) + little(value, size);
    return *this;
}

TdsAnswer& TdsAnswer::money(long long tenThousandths) {
    nextType();
    bytes_ += '\x08' + little<int>(static_cast<int>(tenThousandths >> 32)) + little(tenThousandths, 4);
    return *this;
}

TdsAnswer& TdsAnswer::decimal(long long unscaled) {
    const std::size_t size = nextType() == "decimal(9,6)" ? 4 : 8;
    bytes_ += static_cast<char>(size + 1);
    bytes_ += unscaled < 0 ? '\0' : '\1';
    bytes_ += little(unscaled < 0 ? -unscaled : unscaled, size);
    return *this;
}

TdsAnswer& TdsAnswer::datetime(int days1900, int ticks) {
    nextType();
    bytes_ += '\x08' + little(days1900) + little(ticks);
    return *this;
}

TdsAnswer& TdsAnswer::day(int days0001) {
    nextType();
    bytes_ += '\x03' + little(days0001, 3);
    return *this;
}

TdsAnswer& TdsAnswer::floating(double value) {
    nextType();
    unsigned long long bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    bytes_ += '\x08' + little(bits);
    return *this;
}

TdsAnswer& TdsAnswer::text(const std::string& ascii) {
    const std::string& type = nextType();
    const std::string sent = type[0] == 'n' ? wide(ascii) : ascii;
    if (type != "varchar(max)") {
        bytes_ += little<unsigned short>(static_cast<unsigned short>(sent.size())) + sent;
        return *this;
    }
    bytes_ += little<unsigned long long>(sent.size());  // in chunks, the way long values come
    for (std::size_t at = 0; at < sent.size(); at += 1000) {
        const std::string chunk = sent.substr(at, 1000);
        bytes_ += little<unsigned int>(static_cast<unsigned int>(chunk.size())) + chunk;
    }
    bytes_ += little(0);
    return *this;
}

TdsAnswer& TdsAnswer::utf16(const std::string& bytes) {
    nextType();
    bytes_ += little<unsigned short>(static_cast<unsigned short>(bytes.size())) + bytes;
    return *this;
}

TdsAnswer& TdsAnswer::guid(const std::string& sent) {
    nextType();
    bytes_ += '\x10' + sent;
    return *this;
}

TdsServer::TdsServer(Script script) : script_(std::move(script)) {
    listener_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener_, 4) != 0 ||
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        throw std::runtime_error("no port on the loopback");
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
}

TdsServer::~TdsServer() {
    stopping_ = true;
    shutdown(listener_, SHUT_RDWR);
    if (const int line = line_; line >= 0) shutdown(line, SHUT_RDWR);
    thread_.join();
    close(listener_);
}

std::vector<std::string> TdsServer::batches() const {
    const std::lock_guard lock(guard_);
    return batches_;
}

void TdsServer::serve() {
    while (!stopping_) {
        const int line = accept(listener_, nullptr, nullptr);
        if (line < 0) return;
        line_ = line;
        talk(line);
        line_ = -1;
        close(line);
    }
}

bool TdsServer::readPacket(int line, char& type, std::string& data) {
    data.clear();
    for (bool last = false; !last;) {
        unsigned char head[kHeader];
        if (recv(line, head, kHeader, MSG_WAITALL) != static_cast<ssize_t>(kHeader)) return false;
        type = static_cast<char>(head[0]);
        last = (head[1] & 1) != 0;
        std::string part((static_cast<std::size_t>(head[2]) << 8 | head[3]) - kHeader, '\0');
        if (!part.empty() && recv(line, part.data(), part.size(), MSG_WAITALL) != static_cast<ssize_t>(part.size())) {
            return false;
        }
        data += part;
    }
    return true;
}

void TdsServer::send(int line, const std::string& data) {
    std::size_t at = 0;
    char number = 1;
    do {
        const std::string part = data.substr(at, kPacketMax - kHeader);
        at += part.size();
        const std::size_t length = part.size() + kHeader;
        std::string packet{kReply,
                           at >= data.size() ? '\1' : '\0',
                           static_cast<char>(length >> 8),
                           static_cast<char>(length & 0xFF),
                           0,
                           1,
                           number++,
                           0};
        packet += part;
        if (::send(line, packet.data(), packet.size(), MSG_NOSIGNAL) < 0) return;
    } while (at < data.size());
}

void TdsServer::talk(int line) {
    // version, and the word that encryption is not to be had
    static const std::string kPreloginReply("\x00\x00\x0B\x00\x06\x01\x00\x11\x00\x01\xFF\x0F\x00\x07\xD0\x00\x00\x02",
                                            18);
    char type = 0;
    std::string data;
    while (readPacket(line, type, data)) {
        if (type == kPrelogin) {
            send(line, kPreloginReply);
        } else if (type == kLogin && refuse_) {
            send(
                line,
                TdsAnswer().error(18456, 1, 14, "Login failed for user 'clerk'.", "", 1).done(false, -1, true).bytes());
            return;
        } else if (type == kLogin) {
            const std::string body = std::string("\x01\x74\x00\x00\x04", 5) + shortText("Microsoft SQL Server") +
                                     std::string("\x0F\x00\x07\xD0", 4);
            send(line, '\xAD' + little<unsigned short>(static_cast<unsigned short>(body.size())) + body +
                           TdsAnswer().done().bytes());
        } else if (type == kAttention) {
            send(line, '\xFD' + little<unsigned short>(0x20) + little<unsigned short>(0) + little<long long>(0));
        } else if (type == kBatch) {
            const auto headers = static_cast<unsigned char>(data[0]);  // the length of what precedes the text
            std::vector<SQLWCHAR> letters((data.size() - headers) / 2);
            std::memcpy(letters.data(), data.data() + headers, letters.size() * sizeof(SQLWCHAR));
            const std::string batch = odbc::fromWide(letters.data(), letters.size());
            {
                const std::lock_guard lock(guard_);
                batches_.push_back(batch);
            }
            if (batch == "die") return;
            if (batch != "hang") send(line, script_(batch).bytes());
        }
    }
}

}  // namespace kv::test
