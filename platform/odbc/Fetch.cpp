#include "platform/odbc/Fetch.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "platform/base/Error.h"
#include "platform/base/Text.h"

namespace kv::odbc {
namespace {

// types that only SQL Server's drivers name
constexpr SQLSMALLINT kSqlVariant = -150;
constexpr SQLSMALLINT kSqlXml = -152;
constexpr SQLSMALLINT kSqlTime = -154;
constexpr SQLSMALLINT kSqlOffset = -155;

constexpr SQLULEN kMoneyPrecision = 19;
constexpr SQLULEN kSmallMoneyPrecision = 10;
constexpr int kMoneyScale = 4;
constexpr std::size_t kPartChars = 4096;  ///< long texts are fetched in parts of this size

enum class As { Text, Integer, Double, Decimal, Bit, Date, Binary };

struct Column {
    Carrier carrier = Carrier::Utf16;
    As as = As::Text;
    int scale = 0;
};

struct TypeRow {
    SQLSMALLINT sql;
    As as;
    DataType type;
};

constexpr std::array kTypes = {
    TypeRow{SQL_BIT, As::Bit, DataType::Boolean},
    TypeRow{SQL_TINYINT, As::Integer, DataType::SmallInt},
    TypeRow{SQL_SMALLINT, As::Integer, DataType::SmallInt},
    TypeRow{SQL_INTEGER, As::Integer, DataType::Integer},
    TypeRow{SQL_BIGINT, As::Integer, DataType::BigInt},
    TypeRow{SQL_REAL, As::Double, DataType::Double},
    TypeRow{SQL_FLOAT, As::Double, DataType::Double},
    TypeRow{SQL_DOUBLE, As::Double, DataType::Double},
    TypeRow{SQL_DECIMAL, As::Decimal, DataType::Decimal},
    TypeRow{SQL_NUMERIC, As::Decimal, DataType::Decimal},
    TypeRow{SQL_TYPE_DATE, As::Date, DataType::Date},
    TypeRow{SQL_TYPE_TIMESTAMP, As::Date, DataType::DateTime},
    TypeRow{SQL_GUID, As::Text, DataType::Guid},
    TypeRow{SQL_CHAR, As::Text, DataType::Char},
    TypeRow{SQL_WCHAR, As::Text, DataType::Char},
    TypeRow{SQL_VARCHAR, As::Text, DataType::VarChar},
    TypeRow{SQL_LONGVARCHAR, As::Text, DataType::VarChar},
    TypeRow{SQL_WVARCHAR, As::Text, DataType::VarWChar},
    TypeRow{SQL_WLONGVARCHAR, As::Text, DataType::VarWChar},
    TypeRow{SQL_TYPE_TIME, As::Text, DataType::VarChar},
    TypeRow{kSqlVariant, As::Text, DataType::VarChar},
    TypeRow{kSqlXml, As::Text, DataType::VarWChar},
    TypeRow{kSqlTime, As::Text, DataType::VarChar},
    TypeRow{kSqlOffset, As::Text, DataType::VarChar},
    TypeRow{SQL_BINARY, As::Binary, DataType::VarChar},
    TypeRow{SQL_VARBINARY, As::Binary, DataType::VarChar},
    TypeRow{SQL_LONGVARBINARY, As::Binary, DataType::VarChar},
};

TypeRow typeOf(SQLSMALLINT sql) {
    const auto row = std::find_if(kTypes.begin(), kTypes.end(), [sql](const TypeRow& t) { return t.sql == sql; });
    return row == kTypes.end() ? TypeRow{sql, As::Text, DataType::VarChar} : *row;
}

bool isMoney(SQLULEN precision, int scale) {
    return scale == kMoneyScale && (precision == kMoneyPrecision || precision == kSmallMoneyPrecision);
}

bool describe(SQLHSTMT statement, SQLUSMALLINT number, Carrier carrier, Field& field, Column& column) {
    std::array<SQLWCHAR, 512> wide{};
    std::array<SQLCHAR, 512> narrow{};
    SQLSMALLINT length = 0;
    SQLSMALLINT sqlType = 0;
    SQLULEN size = 0;
    SQLSMALLINT decimals = 0;
    SQLSMALLINT nullable = 0;
    constexpr auto kRoom = static_cast<SQLSMALLINT>(wide.size());
    const SQLRETURN got =
        carrier == Carrier::Utf16
            ? SQLDescribeColW(statement, number, wide.data(), kRoom, &length, &sqlType, &size, &decimals, &nullable)
            : SQLDescribeCol(statement, number, narrow.data(), kRoom, &length, &sqlType, &size, &decimals, &nullable);
    if (!SQL_SUCCEEDED(got)) return false;
    const auto shown = static_cast<std::size_t>(std::min<SQLSMALLINT>(length, kRoom - 1));
    field.name = carrier == Carrier::Utf16 ? fromWide(wide.data(), shown)
                                           : std::string(reinterpret_cast<const char*>(narrow.data()), shown);
    const TypeRow type = typeOf(sqlType);
    field.type = type.type;
    column.carrier = carrier;
    column.as = type.as;
    column.scale = decimals;
    if (type.as == As::Decimal) {
        field.scale = decimals;
        if (isMoney(size, decimals)) field.type = DataType::Currency;
    }
    // the greatest size a driver gives stands for "max", which has none
    if (type.as == As::Text && type.type != DataType::Guid && size < 0x3FFFFFFF) field.size = static_cast<int>(size);
    return true;
}

/// What one SQLGetData brought: whether it failed, and whether the value is NULL.
enum class Got { Failed, Null, Value };

template <class Plain>
Got fetchPlain(SQLHSTMT statement, SQLUSMALLINT number, SQLSMALLINT cType, Plain& into) {
    SQLLEN indicator = 0;
    if (!SQL_SUCCEEDED(SQLGetData(statement, number, cType, &into, sizeof into, &indicator))) return Got::Failed;
    return indicator == SQL_NULL_DATA ? Got::Null : Got::Value;
}

/// Fetches a long value in parts; `closing` units at the end of each part are the driver's terminator.
template <class Unit>
Got fetchParts(SQLHSTMT statement, SQLUSMALLINT number, SQLSMALLINT cType, std::size_t closing,
               std::vector<Unit>& all) {
    std::vector<Unit> part(kPartChars);
    const std::size_t capacity = part.size() - closing;
    for (;;) {
        SQLLEN indicator = 0;
        const SQLRETURN got = SQLGetData(statement, number, cType, part.data(),
                                         static_cast<SQLLEN>(part.size() * sizeof(Unit)), &indicator);
        if (got == SQL_NO_DATA) return Got::Value;
        if (!SQL_SUCCEEDED(got)) return Got::Failed;
        if (indicator == SQL_NULL_DATA) return Got::Null;
        const bool more = indicator == SQL_NO_TOTAL || static_cast<std::size_t>(indicator) / sizeof(Unit) > capacity;
        const std::size_t units = more ? capacity : static_cast<std::size_t>(indicator) / sizeof(Unit);
        all.insert(all.end(), part.begin(), part.begin() + static_cast<std::ptrdiff_t>(units));
        if (got == SQL_SUCCESS || !more) return Got::Value;
    }
}

Got fetchText(SQLHSTMT statement, SQLUSMALLINT number, Carrier carrier, std::string& text) {
    if (carrier == Carrier::Utf16) {
        std::vector<SQLWCHAR> wide;
        const Got got = fetchParts(statement, number, SQL_C_WCHAR, 1, wide);
        text = fromWide(wide.data(), wide.size());
        return got;
    }
    std::vector<char> narrow;
    const Got got = fetchParts(statement, number, SQL_C_CHAR, 1, narrow);
    text.assign(narrow.begin(), narrow.end());
    return got;
}

Got fetchBinary(SQLHSTMT statement, SQLUSMALLINT number, std::string& text) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::vector<unsigned char> bytes;
    const Got got = fetchParts(statement, number, SQL_C_BINARY, 0, bytes);
    text = "0x";
    for (const unsigned char byte : bytes) {
        text += kHex[byte >> 4];
        text += kHex[byte & 15];
    }
    return got;
}

Value dateValue(const SQL_TIMESTAMP_STRUCT& stamp) {
    constexpr SQLUINTEGER kNanoPerMilli = 1'000'000;
    const int milli =
        static_cast<int>(std::min<SQLUINTEGER>((stamp.fraction + kNanoPerMilli / 2) / kNanoPerMilli, 999));
    const int year = stamp.year;
    if (!isRealDay(year, stamp.month, stamp.day)) {  // year 1 of the type date lies before our calendar
        return Format(static_cast<long long>(year), "0000") + "-" + Format(static_cast<int>(stamp.month), "00") + "-" +
               Format(static_cast<int>(stamp.day), "00");
    }
    return Date(year, stamp.month, stamp.day, stamp.hour, stamp.minute, std::min<int>(stamp.second, 59), milli);
}

Got fetchValue(SQLHSTMT statement, SQLUSMALLINT number, const Column& column, Value& value) {
    const auto taken = [&value](Got got, Value fetched) {
        if (got == Got::Value) value = std::move(fetched);
        return got;
    };
    switch (column.as) {
        case As::Bit: {
            unsigned char bit = 0;
            const Got got = fetchPlain(statement, number, SQL_C_BIT, bit);
            return taken(got, bit != 0);
        }
        case As::Integer: {
            SQLBIGINT whole = 0;
            const Got got = fetchPlain(statement, number, SQL_C_SBIGINT, whole);
            return taken(got, static_cast<std::int64_t>(whole));
        }
        case As::Double: {
            double floating = 0;
            const Got got = fetchPlain(statement, number, SQL_C_DOUBLE, floating);
            return taken(got, floating);
        }
        case As::Date: {
            SQL_TIMESTAMP_STRUCT stamp{};
            const Got got = fetchPlain(statement, number, SQL_C_TYPE_TIMESTAMP, stamp);
            return got == Got::Value ? taken(got, dateValue(stamp)) : got;
        }
        default: {
            std::string text;
            const Got got = column.as == As::Binary ? fetchBinary(statement, number, text)
                                                    : fetchText(statement, number, column.carrier, text);
            if (column.as == As::Decimal && got == Got::Value) return taken(got, decimalValue(text, column.scale));
            return taken(got, std::move(text));
        }
    }
}

}  // namespace

Value decimalValue(const std::string& text, int scale) {
    if (scale == 0) {
        std::int64_t whole = 0;
        const auto read = std::from_chars(text.data(), text.data() + text.size(), whole);
        if (read.ec == std::errc() && read.ptr == text.data() + text.size()) return whole;
    } else if (scale <= kMoneyScale) {
        try {
            if (const auto amount = Money::parse(text)) return *amount;
        } catch (const Error&) {  // wider than Money: told as nearly as a floating number can
            return numberOf(text);
        }
    }
    return numberOf(text);
}

bool fetchResult(SQLHSTMT statement, ResultSet& result, Carrier carrier) {
    SQLSMALLINT count = 0;
    if (!SQL_SUCCEEDED(SQLNumResultCols(statement, &count))) return false;
    std::vector<Column> columns(static_cast<std::size_t>(count));
    std::vector<Field> fields(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!describe(statement, static_cast<SQLUSMALLINT>(i + 1), carrier, fields[i], columns[i])) return false;
    }
    result.fields = std::move(fields);
    for (;;) {
        const SQLRETURN got = SQLFetch(statement);
        if (got == SQL_NO_DATA) return true;
        if (!SQL_SUCCEEDED(got)) return false;
        Row& row = result.rows.emplace_back(columns.size());
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (fetchValue(statement, static_cast<SQLUSMALLINT>(i + 1), columns[i], row[i]) == Got::Failed)
                return false;
        }
    }
}

}  // namespace kv::odbc
