/// A fixture whose tests run in a scratch folder of their own, which goes with it, and leave no
/// file open.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

struct ScratchTest : testing::Test {
    ScratchTest() : folder(::mkdtemp(pattern.data())) {
        std::filesystem::current_path(folder);
        ::close(lowestFreeFd);
    }
    ~ScratchTest() override {
        std::filesystem::current_path("/");
        ::close(99);
        std::filesystem::remove_all(folder);
        EXPECT_EQ(::dup(0), lowestFreeFd) << "a file was left open";
        ::close(lowestFreeFd);
    }

    static std::string Write(const std::string& name, const std::string& bytes) {
        std::ofstream(name, std::ios::binary) << bytes;
        return name;
    }
    static std::string Read(const std::string& name) {
        std::ifstream file(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// The path of a stream without an end to seek; 99 is out of the way of the check above.
    static std::string UnseekablePath() {
        int ends[2];
        EXPECT_TRUE(::pipe(ends) == 0 && ::dup2(ends[0], 99) == 99);
        for (const int end : ends) ::close(end);
        return "/dev/fd/99";
    }

    const int lowestFreeFd = ::dup(0);
    std::string pattern = std::filesystem::temp_directory_path() / "quorvel-XXXXXX";
    const std::string folder;
};
