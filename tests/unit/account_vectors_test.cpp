#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "account/account_check.h"

namespace {

// Numbers with known results, of which the path column tells what is special
// about them. A row without a bank code goes through both entry points.
TEST(AccountVectors, Results) {
    std::ifstream file(TEST_DATA "/check_vectors.csv");
    std::string line, method, account, bank_code, result, path;
    ASSERT_TRUE(std::getline(file, line));
    ASSERT_EQ(line, "method,account,bank_code,result,path");
    int rows = 0;
    for (; std::getline(file, line); ++rows) {
        std::istringstream columns(line);
        std::getline(columns, method, ',');
        std::getline(columns, account, ',');
        std::getline(columns, bank_code, ',');
        std::getline(columns, result, ',');
        uint8_t code = static_cast<uint8_t>(std::strtoul(method.c_str(), nullptr, 16));
        int expected = static_cast<int>(std::strtol(result.c_str(), nullptr, 10));
        if (bank_code.empty()) {
            EXPECT_EQ(account_check(account.c_str(), code), expected) << line;
            bank_code = "37040044";
        }
        EXPECT_EQ(account_check_bank(account.c_str(), bank_code.c_str(), code), expected) << line;
    }
    EXPECT_GT(rows, 700);
}

}  // namespace
