/// A fixture with a scratch folder of its own, which goes with it. Its tests leave no file open.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

struct ScratchTest : testing::Test {
    ScratchTest() : folder(::mkdtemp(pattern.data())) { ::close(lowestFree); }
    ~ScratchTest() override {
        std::filesystem::remove_all(folder);
        EXPECT_EQ(::dup(0), lowestFree) << "a file was left open";
        ::close(lowestFree);
    }

    std::string Path(const std::string& name) const { return folder + '/' + name; }
    std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
        return Path(name);
    }
    std::string Read(const std::string& name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const int lowestFree = ::dup(0);
    std::string pattern = std::filesystem::temp_directory_path() / "quorvel-XXXXXX";
    const std::string folder;
};
