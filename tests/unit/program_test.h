// A test that runs a program of tools/ in a folder of its own.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>

#include "tests/unit/test_files.h"

// The header lines of the lists of a release.
const std::string german_header = "valid_from,bank_code,flag,method,rule,successor,bic,name,postal_code,city,country\n";
const std::string national_header = "bank_id,bic,name,postal_code,city,country\n";
const std::string bic_header = "bic,sct,sdd,cor1,b2b,name\n";

using lists_t = std::map<std::string, std::string>;  // the content of each file

class ProgramTest : public testing::Test {
protected:
    void SetUp() override {
        char name[] = "/tmp/program_test_XXXXXX";
        ASSERT_NE(mkdtemp(name), nullptr);
        folder = name;
    }

    void TearDown() override { std::filesystem::remove_all(folder); }

    // Runs a command and keeps its exit status and what it said.
    void run(const std::string& command) {
        FILE* pipe = popen((command + " 2>&1").c_str(), "r");
        ASSERT_NE(pipe, nullptr);
        said.clear();
        char buffer[256];
        while (fgets(buffer, sizeof buffer, pipe)) said += buffer;
        status = WEXITSTATUS(pclose(pipe));
    }

    static void write_whole(const std::string& name, const std::string& content) {
        std::ofstream(name, std::ios::binary) << content;
    }

    static void write_lists(const std::string& where, const lists_t& lists) {
        std::filesystem::create_directories(where);
        for (const auto& [name, content] : lists) write_whole(where + "/" + name, content);
    }

    std::string folder, said;
    int status = -1;
};
