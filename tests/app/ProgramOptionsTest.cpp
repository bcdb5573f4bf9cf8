#include "app/ProgramOptions.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

auto parsed(std::vector<std::string> arguments)
{
    return programOptions(arguments, "/home/user");
}

TEST(ProgramOptions, FilesCountFromTheFolder)
{
    const auto options = parsed({"a.txt", "/b", "../c/./d", "-"});
    ASSERT_TRUE(options.has_value());
    const std::vector<std::filesystem::path> expected{"/home/user/a.txt", "/b", "/home/c/d",
                                                      "/home/user/-"};
    EXPECT_EQ(options->files, expected);
    EXPECT_EQ(options->size, WindowSize{});
}

TEST(ProgramOptions, TakeValuesInBothForms)
{
    const auto apart =
        parsed({"--screenshot", "p.png", "--size", "900x600", "--results", "../found", "f"});
    const auto joined = parsed({"--screenshot=p.png", "--size=900x600", "--results=../found", "f"});
    for (const auto& options : {apart, joined}) {
        ASSERT_TRUE(options.has_value());
        EXPECT_EQ(options->screenshot, std::filesystem::path("/home/user/p.png"));
        EXPECT_EQ(options->size, (WindowSize{900, 600}));
        EXPECT_EQ(options->results, std::filesystem::path("/home/found"));
        EXPECT_EQ(options->files.size(), 1u);
    }
}

TEST(ProgramOptions, WhatFollowsTwoDashesAreFiles)
{
    const auto options = parsed({"--help", "--", "--version", "--"});
    ASSERT_TRUE(options.has_value());
    EXPECT_TRUE(options->showsHelp);
    EXPECT_FALSE(options->showsVersion);
    EXPECT_EQ(options->files.size(), 2u);
}

TEST(ProgramOptions, BadOnesAreRefused)
{
    const std::vector<std::vector<std::string>> bad{
        {"--wrong"},         {"-x"},           {"--screenshot"},   {"--screenshot="},
        {"--size"},          {"--size", "10"}, {"--size", "0x10"}, {"--size", "10x-1"},
        {"--results"},       {"--results="},   {"--size=1x2x3"},   {"--size=x"},
        {"--size=99999x10"}, {"--sizes=1x2"},
    };
    for (const std::vector<std::string>& arguments : bad) {
        const auto options = parsed(arguments);
        ASSERT_FALSE(options.has_value()) << arguments.front();
        EXPECT_FALSE(options.error().empty());
        EXPECT_EQ(options.error().find('\n'), std::string::npos);
    }
}

}  // namespace
}  // namespace tavrel
