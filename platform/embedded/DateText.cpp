// The reading of date texts: every form that SQL Server takes under us_english.

#include "platform/embedded/DateTime.h"
#include "platform/embedded/SqlError.h"
#include "platform/embedded/Utf8.h"

namespace kv::tsql {
namespace {

constexpr std::int64_t kDayMs = 86'400'000;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c | 32) >= 'a' && (c | 32) <= 'z'; }

int yearOfTwo(int year) { return year < 50 ? 2000 + year : 1900 + year; }

/// Reads one date text; faults are kept, not thrown, since ISDATE only asks.
class TextReader {
public:
    TextReader(std::string_view text, DayOrder order) : text_(text), order_(order) {}

    ReadMoment read() {
        skipBlanks();
        while (!done() && fault_ == ReadFault::None) {
            readPiece();
            skipBlanks();
            if (!done() && peek() == ',' && hasDay_) {
                ++at_;
                skipBlanks();
            }
        }
        if (fault_ == ReadFault::None && rangeFault_) fault_ = ReadFault::Range;
        ReadMoment out{Moment{days_, timeMs_}, fault_, fractionDigits_, hasDay_};
        if (carryDay_) ++out.moment.days;
        return out;
    }

private:
    bool done() const { return at_ >= text_.size(); }
    char peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
    void skipBlanks() {
        while (!done() && (peek() == ' ' || peek() == '\t')) ++at_;
    }
    void syntax() { fault_ = ReadFault::Syntax; }

    struct Number {
        int value = 0;
        int digits = 0;
    };
    Number number() {
        Number out;
        while (isDigit(peek()) && out.digits < 9) {
            out.value = out.value * 10 + (text_[at_++] - '0');
            ++out.digits;
        }
        return out;
    }
    std::string_view word() {
        const std::size_t start = at_;
        while (isLetter(peek())) ++at_;
        return text_.substr(start, at_ - start);
    }
    static int monthOf(std::string_view name) {
        for (int month = 1; month <= 12; ++month) {
            const std::string_view full = monthName(month);
            if (sameWord(name, full) || sameWord(name, full.substr(0, 3))) return month;
        }
        return 0;
    }

    void setDay(int year, int month, int day) {
        if (hasDay_) return syntax();
        hasDay_ = true;
        if (!dayExists(year, month, day)) {
            rangeFault_ = true;
            return;
        }
        days_ = daysOf(year, month, day);
    }

    void readPiece() {
        if (isLetter(peek())) return readMonthFirst();
        if (!isDigit(peek())) return syntax();
        const std::size_t start = at_;
        const Number first = number();
        const char mark = peek();
        if (mark == ':') {
            at_ = start;
            return readTime();
        }
        if (mark == '/' || mark == '-' || (mark == '.' && isDigit(peek(1)))) return readSeparated(first, mark);
        if (isHalfOfDay()) {
            at_ = start;
            return readTime();
        }
        std::size_t ahead = 0;
        while (peek(ahead) == ' ' || peek(ahead) == ',') ++ahead;
        if (isLetter(peek(ahead))) {
            at_ += ahead;
            return readNumberThenMonth(first);
        }
        readUnseparated(first);
    }

    /// AM or PM stands next, blanks before it ignored.
    bool isHalfOfDay() const {
        std::size_t ahead = 0;
        while (peek(ahead) == ' ') ++ahead;
        const char a = static_cast<char>(peek(ahead) | 32);
        return (a == 'a' || a == 'p') && (peek(ahead + 1) | 32) == 'm' && !isLetter(peek(ahead + 2));
    }

    void readUnseparated(Number all) {
        switch (all.digits) {
            case 8:
                setDay(all.value / 10000, all.value / 100 % 100, all.value % 100);
                break;
            case 6:
                setDay(yearOfTwo(all.value / 10000), all.value / 100 % 100, all.value % 100);
                break;
            case 4:
                setDay(all.value, 1, 1);
                break;
            default:
                return syntax();
        }
        if ((peek() | 32) == 't' && all.digits == 8) return syntax();
    }

    void readSeparated(Number first, char mark) {
        ++at_;
        if (isLetter(peek())) return readNumberThenMonth(first);
        const Number second = number();
        if (second.digits == 0 || peek() != mark) return syntax();
        ++at_;
        const Number third = number();
        if (third.digits == 0 || first.digits > 4 || second.digits > 2 || third.digits > 4) return syntax();
        if (first.digits == 4) {
            if (third.digits > 2) return syntax();
            setDay(first.value, second.value, third.value);
            if ((peek() | 32) == 't' && mark == '-') {
                ++at_;
                readTime();
                if ((peek() | 32) == 'z') ++at_;
            }
            return;
        }
        if (first.digits > 2 || third.digits == 3) return syntax();
        if (order_ == DayOrder::Ymd && third.digits <= 2) {
            return setDay(yearOfTwo(first.value), second.value, third.value);
        }
        const int year = third.digits <= 2 ? yearOfTwo(third.value) : third.value;
        if (order_ == DayOrder::Dmy) return setDay(year, second.value, first.value);
        setDay(year, first.value, second.value);
    }

    void skipJoint() {
        while (peek() == ' ' || peek() == ',' || peek() == '-' || peek() == '/' || peek() == '.') ++at_;
    }

    void readMonthFirst() {
        const int month = monthOf(word());
        if (month == 0) return syntax();
        skipJoint();
        const Number first = number();
        if (first.digits == 0) return syntax();
        if (first.digits == 4) {
            const std::size_t end = at_;
            skipJoint();
            const Number day = number();
            if (day.digits >= 1 && day.digits <= 2 && peek() != ':' && !isHalfOfDay()) {
                return setDay(first.value, month, day.value);
            }
            at_ = end;
            return setDay(first.value, month, 1);
        }
        skipJoint();
        const std::size_t start = at_;
        const Number year = number();
        if (first.digits > 2 || (year.digits != 4 && year.digits != 2) || peek() == ':' || isHalfOfDay()) {
            at_ = start;
            return syntax();
        }
        setDay(year.digits == 2 ? yearOfTwo(year.value) : year.value, month, first.value);
    }

    /// "25 Aug 2017", "25-Aug-17", "2017 Aug 25", "2017 25 Aug" is not taken.
    void readNumberThenMonth(Number first) {
        const int month = monthOf(word());
        if (month == 0) return syntax();
        skipJoint();
        const Number last = number();
        if (first.digits == 4) {
            if (last.digits == 0) return setDay(first.value, month, 1);
            if (last.digits > 2) return syntax();
            return setDay(first.value, month, last.value);
        }
        if (first.digits > 2 || (last.digits != 4 && last.digits != 2)) return syntax();
        setDay(last.digits == 2 ? yearOfTwo(last.value) : last.value, month, first.value);
    }

    bool readFraction(std::int64_t& ms) {
        const char mark = peek();
        ++at_;
        int value = 0;
        int digits = 0;
        bool roundUp = false;
        for (; isDigit(peek()); ++digits, ++at_) {
            if (digits < 3) value = value * 10 + (text_[at_] - '0');
            if (digits == 3) roundUp = text_[at_] >= '5';
        }
        if (digits == 0 || digits > 9 || (mark == ':' && digits > 3)) return false;
        fractionDigits_ = mark == ':' ? 3 : digits;
        if (mark == '.') {
            for (int d = digits; d < 3; ++d) value *= 10;
        }
        ms += value + (roundUp ? 1 : 0);
        return true;
    }

    void readTime() {
        if (hasTime_) return syntax();
        hasTime_ = true;
        Number hour = number();
        Number minute;
        Number second;
        std::int64_t fraction = 0;
        bool colon = false;
        if (hour.digits == 0 || hour.digits > 2) return syntax();
        if (peek() == ':') {
            colon = true;
            ++at_;
            minute = number();
            if (minute.digits == 0 || minute.digits > 2) return syntax();
            if (peek() == ':') {
                ++at_;
                second = number();
                if (second.digits == 0 || second.digits > 2) return syntax();
                if ((peek() == '.' || peek() == ':') && !readFraction(fraction)) return syntax();
            }
        }
        if (isHalfOfDay()) {
            skipBlanks();
            const bool afternoon = (peek() | 32) == 'p';
            at_ += 2;
            if (hour.value > 12 && !afternoon) rangeFault_ = true;
            if (afternoon && hour.value < 12) hour.value += 12;
            if (!afternoon && hour.value == 12) hour.value = 0;
        } else if (!colon) {
            return syntax();
        }
        if (hour.value > 23 || minute.value > 59 || second.value > 59) {
            rangeFault_ = true;
            return;
        }
        const std::int64_t total = ((hour.value * 60LL + minute.value) * 60 + second.value) * 1000 + fraction;
        carryDay_ = total >= kDayMs;
        timeMs_ = static_cast<std::int32_t>(total % kDayMs);
    }

    std::string_view text_;
    DayOrder order_;
    std::size_t at_ = 0;
    ReadFault fault_ = ReadFault::None;
    std::int32_t days_ = 0;
    std::int32_t timeMs_ = 0;
    int fractionDigits_ = 0;
    bool hasDay_ = false;
    bool hasTime_ = false;
    bool carryDay_ = false;
    bool rangeFault_ = false;
};

}  // namespace

ReadMoment readMoment(std::string_view text, DayOrder order) { return TextReader(text, order).read(); }

std::string dateFromText(std::string_view text, const Type& type, DayOrder order, std::string_view fromType) {
    const ReadMoment read = readMoment(text, order);
    const bool old = type.kind == Kind::DateTime || type.kind == Kind::SmallDateTime;
    const bool syntax = read.fault == ReadFault::Syntax || (old && read.fractionDigits > 3);
    if (syntax) raise(type.kind == Kind::SmallDateTime ? 295 : 241);
    if (read.fault == ReadFault::Range) {
        if (!old) raise(241);
        raise(242, {fromType, kindName(type.kind)});
    }
    if (!old && read.moment.days > kDaysMax) raise(241);
    return momentText(fitted(read.moment, type, fromType));
}

}  // namespace kv::tsql
