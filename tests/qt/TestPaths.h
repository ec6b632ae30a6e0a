#pragma once
// Files a Qt test writes, private to the running test, since ctest runs tests side by side.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>

inline std::filesystem::path PrivateTestFile(std::string const& extension)
{
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    const std::string name = test ? std::string(test->test_suite_name()) + "." + test->name() : "sonarium";
    return std::filesystem::temp_directory_path() /
           ("sonarium-" + name + "-" + std::to_string(getpid()) + extension);
}
