#pragma once
// TdsServer: a stand-in for SQL Server on the loopback that speaks enough of its protocol to sign a driver on and to
// answer each batch from a script. So the driver's way to SQL Server runs without one: through FreeTDS, bytes and all.

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace kv::test {

/// The tokens of an answer, in the order in which they are added.
class TdsAnswer {
public:
    TdsAnswer& error(int number, int state, int severity, const std::string& text, const std::string& procedure,
                     int line);
    TdsAnswer& info(int number, const std::string& text);
    /// Ends a statement; `more`: another one of the batch follows.
    TdsAnswer& done(bool more = false, long rows = -1, bool failed = false);

    // columns of a result, then its values row by row
    TdsAnswer& columns(const std::vector<std::pair<std::string, std::string>>& namesAndTypes);
    TdsAnswer& row();
    TdsAnswer& nothing();                          ///< NULL in the column whose turn it is
    TdsAnswer& number(long long value);            ///< int, bigint, bit
    TdsAnswer& money(long long tenThousandths);    ///< money
    TdsAnswer& decimal(long long unscaled);        ///< decimal
    TdsAnswer& datetime(int days1900, int ticks);  ///< datetime, ticks of 1/300 s
    TdsAnswer& day(int days0001);                  ///< date
    TdsAnswer& floating(double value);             ///< float
    TdsAnswer& text(const std::string& ascii);     ///< varchar, varchar(max), nvarchar
    TdsAnswer& utf16(const std::string& bytes);    ///< nvarchar, as it travels
    TdsAnswer& guid(const std::string& bytes);     ///< uniqueidentifier, 16 bytes as they travel

    const std::string& bytes() const { return bytes_; }

private:
    TdsAnswer& message(char token, int number, int state, int severity, const std::string& text,
                       const std::string& procedure, int line);
    const std::string& nextType();
    std::string bytes_;
    std::vector<std::string> types_;
    std::size_t column_ = 0;
};

class TdsServer {
public:
    using Script = std::function<TdsAnswer(const std::string& batch)>;

    /// Batches that the script is not asked: "hang" waits for the driver's cancel, "die" cuts the line.
    explicit TdsServer(Script script);
    TdsServer(const TdsServer&) = delete;
    TdsServer& operator=(const TdsServer&) = delete;
    ~TdsServer();

    int port() const { return port_; }
    std::vector<std::string> batches() const;
    void refuseLogons(bool refuse) { refuse_ = refuse; }

private:
    void serve();
    void talk(int line);
    static bool readPacket(int line, char& type, std::string& data);
    static void send(int line, const std::string& data);

    Script script_;
    int listener_ = -1;
    int port_ = 0;
    std::atomic<bool> refuse_ = false;
    std::atomic<bool> stopping_ = false;
    std::atomic<int> line_ = -1;
    mutable std::mutex guard_;
    std::vector<std::string> batches_;
    std::thread thread_;
};

}  // namespace kv::test
