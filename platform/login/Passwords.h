#pragma once
// Passwords of employees: made into Argon2id hashes, which carry their own salt and cost.

#include <string>
#include <string_view>

namespace kv {

/// A new hash with a fresh salt, about 100 characters of ASCII. Takes about a tenth of a second and 64 MiB by intent.
/// Raises Error 7 when the memory is not there.
std::string hashPassword(std::string_view password);

/// Whether the password belongs to the hash. A text that is no such hash belongs to no password.
bool verifyPassword(const std::string& hash, std::string_view password);

/// Takes the time of a verification and says no: an unknown employee must not be told by a quick answer.
bool verifyNothing(std::string_view password);

}  // namespace kv
