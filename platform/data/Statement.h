#pragma once
// Statement: composes the text of a statement readably, with every value quoted so that it stays a value.
//
//     call("sp_Insert_JV2").text(Batch).text(PrintJVBatch).text("").text(Year)      sp_Insert_JV2 'B', 'P', '', '2024'
//     call("sp_Load_BatchDT").separator(",").text(Book).text(Batch)                 sp_Load_BatchDT 'JV','B'
//     sql("select * from {} where Batch = '{}'").name(BookTable).text(Batch)        select * from JV where Batch = 'B'
//
// A template keeps blanks and commas as the server's contract has them. A "{}" between apostrophes takes the bare
// value, any other one takes the value with its own apostrophes, so the same call is right in both places.

#include <concepts>
#include <string>
#include <string_view>

#include "platform/data/Value.h"

namespace kv {

/// Trims spaces at both ends and doubles every apostrophe: fit to stand between apostrophes in a statement.
std::string SQLString(std::string_view text);
/// The text made fit to stand between apostrophes, blanks kept: apostrophes doubled; NUL left out and what is no
/// UTF-8 replaced, because a driver could cut or misread the statement there.
std::string escaped(std::string_view text);
/// A value as a statement writes it: NULL, 1, 12.50, 'text', '2024-03-31' or with a time '2024-03-31T08:30:00.000'.
std::string sqlLiteral(const Value& value);
/// A name of the server ("JV", "ACCOUNTING..SYS", "#Lines"). Raises Error 5 when it holds anything but letters,
/// digits, "_", "#", "@", "$" and "." outside of brackets.
std::string sqlName(std::string_view name);

class Statement {
public:
    Statement& text(std::string_view value);   ///< as SQLString
    Statement& exact(std::string_view value);  ///< text with its blanks
    Statement& amount(Money value);            ///< "0.00"
    template <std::integral Whole>
    Statement& number(Whole value) {
        return put(std::to_string(value), false);
    }
    Statement& number(double value);  ///< shortest exact digits
    Statement& flag(bool value);      ///< 1 or 0
    Statement& date(const Date& value, std::string_view pattern = "yyyy-MM-dd");
    Statement& null();
    Statement& value(const Value& value);  ///< by its type, as sqlLiteral
    Statement& name(std::string_view name);

    /// What stands between the arguments from here on; ", " at first.
    Statement& separator(std::string_view separator);
    /// Goes on with another piece of template, for parts that are not always there.
    Statement& more(std::string_view piece);

    /// The finished text. Raises Error 5 when a "{}" is left open.
    std::string str() const;
    /// The same as an argument of Connection's calls; the text lives as long as this object is not changed.
    operator std::string_view() const {  // NOLINT: a statement is its text
        return finished_ = str();
    }

private:
    friend Statement call(std::string_view procedure);
    friend Statement sql(std::string_view pieces);
    Statement(std::string text, bool isCall) : text_(std::move(text)), call_(isCall) {}

    Statement& put(std::string_view bare, bool quoted);
    bool openPlace();  ///< moves template text up to the next "{}" over; true when the place is between apostrophes

    std::string text_;
    mutable std::string finished_;
    std::string rest_;  ///< template text that has not been reached
    std::string separator_ = ", ";
    bool call_ = false;
    bool hasArgument_ = false;
    bool inText_ = false;  ///< the end of text_ is between apostrophes
};

/// A procedure call: arguments follow the name after one blank.
Statement call(std::string_view procedure);
/// A template with "{}" places.
Statement sql(std::string_view pieces);

}  // namespace kv
