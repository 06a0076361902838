#include "platform/base/Error.h"

namespace kv {

Error::Error(long number_, std::string source_, std::string description_, std::source_location at)
    : number(number_), source(std::move(source_)), description(std::move(description_)), line(at.line()) {}

void Error::addPlace(std::string_view tag) {
    description += "\r\nin ";
    description += tag;
    description += " at line ";
    description += std::to_string(line);
}

}  // namespace kv
