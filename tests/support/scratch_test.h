/// A fixture that runs each test in its own temporary directory and checks for leaked descriptors.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

struct ScratchTest : testing::Test {
    ScratchTest() {
        ::close(lowestFreeFd);
        std::filesystem::current_path(directory);
    }
    ~ScratchTest() override {
        std::filesystem::current_path("/");
        std::filesystem::remove_all(directory);
        ::close(99);
        EXPECT_EQ(::dup(0), lowestFreeFd) << "a descriptor was leaked";
        ::close(lowestFreeFd);
    }

    static std::string Write(const std::string& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    static std::string Read(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// The path of an unseekable stream; fd 99 does not affect the leak check.
    static std::string UnseekablePath() {
        int ends[2];
        EXPECT_TRUE(::pipe(ends) == 0 && ::dup2(ends[0], 99) == 99);
        for (const int end : ends) ::close(end);
        return "/dev/fd/99";
    }

    const int lowestFreeFd = ::dup(0);
    std::string pattern = std::filesystem::temp_directory_path() / "quorvel-XXXXXX";
    const std::string directory = ::mkdtemp(pattern.data());
};
