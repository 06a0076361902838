#include "platform/login/Passwords.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

using namespace std::string_literals;

TEST(Passwords, AHashBelongsToItsPasswordOnly) {
    const std::string hash = hashPassword("ledger-2024");
    EXPECT_TRUE(hash.starts_with("$argon2id$")) << hash;
    EXPECT_LT(hash.size(), 128u);
    EXPECT_NE(hash, hashPassword("ledger-2024"));  // each has its own salt
    EXPECT_TRUE(verifyPassword(hash, "ledger-2024"));
    for (const std::string& other :
         {""s, "ledger-202"s, "ledger-20244"s, "Ledger-2024"s, "ledger-2024\0"s, " ledger-2024"s}) {
        EXPECT_FALSE(verifyPassword(hash, other)) << other;
    }
}

TEST(Passwords, WhatIsNoHashBelongsToNobody) {
    for (const std::string& broken :
         {""s, "ledger-2024"s, "$argon2id$"s, "$argon2id$v=19$m=65536,t=2,p=1$x$y"s, std::string(200, 'x')}) {
        EXPECT_FALSE(verifyPassword(broken, broken)) << broken;
        EXPECT_FALSE(verifyPassword(broken, "")) << broken;
    }
    EXPECT_FALSE(verifyNothing("nobody"));
}

TEST(Passwords, KeepsEveryLetter) {
    const std::string hash = hashPassword("Peña’s 🏥");
    EXPECT_TRUE(verifyPassword(hash, "Peña’s 🏥"));
    EXPECT_FALSE(verifyPassword(hash, "Pena’s 🏥"));
}

}  // namespace
}  // namespace kv
