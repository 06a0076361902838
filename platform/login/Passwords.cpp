#include "platform/login/Passwords.h"

#include <sodium.h>

#include <array>

#include "platform/base/Error.h"

namespace kv {
namespace {

constexpr long kErrOutOfMemory = 7;
constexpr long kErrLibrary = 48;

void prepareLibrary() {
    static const int state = sodium_init();
    if (state < 0) throw Error(kErrLibrary, "Passwords", "The library for passwords cannot be used.");
}

}  // namespace

std::string hashPassword(std::string_view password) {
    prepareLibrary();
    std::array<char, crypto_pwhash_STRBYTES> text{};
    const int made =
        crypto_pwhash_str_alg(text.data(), password.data(), password.size(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                              crypto_pwhash_MEMLIMIT_INTERACTIVE, crypto_pwhash_ALG_ARGON2ID13);
    if (made != 0) throw Error(kErrOutOfMemory, "Passwords", "There is not enough memory to keep the password safely.");
    return text.data();
}

bool verifyPassword(const std::string& hash, std::string_view password) {
    prepareLibrary();
    if (hash.size() >= crypto_pwhash_STRBYTES) return false;
    return crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

bool verifyNothing(std::string_view password) {
    static const std::string hash = hashPassword("nobody");
    verifyPassword(hash, password);
    return false;
}

}  // namespace kv
