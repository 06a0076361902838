#include "platform/embedded/ConvertStyles.h"

#include "platform/embedded/SqlError.h"

namespace kv::tsql {
namespace {

/// Letters of a pattern: Y four digits of the year, y two; M month, D day, H hour, N minute, S second in two digits;
/// d day and h hour of twelve, blank-padded; B month name of three letters; F fraction; f ".fff" left out when it is
/// zero; P AM or PM; "|" begins the time of day, which a date has not. Everything else stands for itself.
constexpr ConvertStyle kStyles[] = {
    {0, "B d Y| h:NP", DayOrder::Mdy, false},
    {1, "M/D/y", DayOrder::Mdy, false},
    {2, "y.M.D", DayOrder::Ymd, false},
    {3, "D/M/y", DayOrder::Dmy, false},
    {4, "D.M.y", DayOrder::Dmy, false},
    {5, "D-M-y", DayOrder::Dmy, false},
    {6, "D B y", DayOrder::Dmy, false},
    {7, "B D, y", DayOrder::Mdy, false},
    {8, "|H:N:S", DayOrder::Mdy, true},
    {9, "B d Y| h:N:S:FP", DayOrder::Mdy, false},
    {10, "M-D-y", DayOrder::Mdy, false},
    {11, "y/M/D", DayOrder::Ymd, false},
    {12, "yMD", DayOrder::Ymd, false},
    {13, "D B Y| H:N:S:F", DayOrder::Dmy, false},
    {14, "|H:N:S:F", DayOrder::Mdy, true},
    {20, "Y-M-D| H:N:S", DayOrder::Ymd, false},
    {21, "Y-M-D| H:N:S.F", DayOrder::Ymd, false},
    {22, "M/D/y| h:N:S P", DayOrder::Mdy, false},
    {23, "Y-M-D", DayOrder::Ymd, false},
    {24, "|H:N:S", DayOrder::Mdy, true},
    {25, "Y-M-D| H:N:S.F", DayOrder::Ymd, false},
    {100, "B d Y| h:NP", DayOrder::Mdy, false},
    {101, "M/D/Y", DayOrder::Mdy, false},
    {102, "Y.M.D", DayOrder::Ymd, false},
    {103, "D/M/Y", DayOrder::Dmy, false},
    {104, "D.M.Y", DayOrder::Dmy, false},
    {105, "D-M-Y", DayOrder::Dmy, false},
    {106, "D B Y", DayOrder::Dmy, false},
    {107, "B D, Y", DayOrder::Mdy, false},
    {108, "|H:N:S", DayOrder::Mdy, true},
    {109, "B d Y| h:N:S:FP", DayOrder::Mdy, false},
    {110, "M-D-Y", DayOrder::Mdy, false},
    {111, "Y/M/D", DayOrder::Ymd, false},
    {112, "YMD", DayOrder::Ymd, false},
    {113, "D B Y| H:N:S:F", DayOrder::Dmy, false},
    {114, "|H:N:S:F", DayOrder::Mdy, true},
    {120, "Y-M-D| H:N:S", DayOrder::Ymd, false},
    {121, "Y-M-D| H:N:S.F", DayOrder::Ymd, false},
    {126, "Y-M-D|TH:N:Sf", DayOrder::Ymd, false},
    {127, "Y-M-D|TH:N:Sf", DayOrder::Ymd, false},
};

class StyleWriter {
public:
    StyleWriter(Moment moment, const Type& type) : moment_(moment), day_(civilOf(moment.days)), type_(type) {}

    std::string write(std::string_view pattern) {
        for (const char c : pattern) {
            if (c == '|') {
                if (type_.kind == Kind::Date) break;
                continue;
            }
            put(c);
        }
        return std::move(out_);
    }

private:
    void two(int value) {
        out_ += static_cast<char>('0' + value / 10);
        out_ += static_cast<char>('0' + value % 10);
    }
    void blankPadded(int value) {
        out_ += value < 10 ? ' ' : static_cast<char>('0' + value / 10);
        out_ += static_cast<char>('0' + value % 10);
    }
    int hour() const { return moment_.ms / 3'600'000; }

    /// Milliseconds; datetime2 shows its own count of digits.
    void fraction() {
        const int ms = moment_.ms % 1000;
        std::string digits = {static_cast<char>('0' + ms / 100), static_cast<char>('0' + ms / 10 % 10),
                              static_cast<char>('0' + ms % 10)};
        if (type_.kind == Kind::DateTime2) digits.resize(type_.scale, '0');
        out_ += digits;
    }

    void put(char c) {
        switch (c) {
            case 'Y':
                two(day_.year / 100);
                two(day_.year % 100);
                break;
            case 'y':
                two(day_.year % 100);
                break;
            case 'M':
                two(day_.month);
                break;
            case 'D':
                two(day_.day);
                break;
            case 'd':
                blankPadded(day_.day);
                break;
            case 'B':
                out_ += monthName(day_.month).substr(0, 3);
                break;
            case 'H':
                two(hour());
                break;
            case 'h':
                blankPadded(hour() % 12 == 0 ? 12 : hour() % 12);
                break;
            case 'N':
                two(moment_.ms / 60'000 % 60);
                break;
            case 'S':
                two(moment_.ms / 1'000 % 60);
                break;
            case 'F':
                fraction();
                break;
            case 'f':
                if (moment_.ms % 1000 != 0) {
                    out_ += '.';
                    fraction();
                }
                break;
            case 'P':
                out_ += hour() < 12 ? "AM" : "PM";
                break;
            default:
                out_ += c;
        }
    }

    Moment moment_;
    CivilDay day_;
    Type type_;
    std::string out_;
};

}  // namespace

const ConvertStyle* findStyle(int number) {
    for (const ConvertStyle& style : kStyles) {
        if (style.number == number) return &style;
    }
    return nullptr;
}

int defaultStyle(const Type& dateType) {
    return dateType.kind == Kind::Date || dateType.kind == Kind::DateTime2 ? 121 : 0;
}

std::string momentInStyle(Moment moment, const Type& type, int style) {
    const ConvertStyle* found = findStyle(style);
    if (!found) raise(281, {style, kindName(type.kind)});
    if (found->timeOnly && type.kind == Kind::Date) raise(9809, {style, "date", "varchar"});
    std::string text = StyleWriter(moment, type).write(found->pattern);
    if (type.kind == Kind::DateTime2 && type.scale == 0 && !text.empty() && text.back() == '.') text.pop_back();
    return text;
}

}  // namespace kv::tsql
