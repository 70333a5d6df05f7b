#include "runner/commands/Pager.h"

#include <gtest/gtest.h>

#include <string>

namespace zu::runner::commands {
namespace {

/// A small terminal: what it shows, and the keys that will be pressed.
class PaperScreen final : public Screen {
public:
    explicit PaperScreen(std::wstring keys) : keys_(std::move(keys)) {}

    std::size_t width() const override { return 10; }
    std::size_t height() const override { return 5; }
    void Line(std::wstring_view text, Style) override { paper += std::wstring(text) + L"/"; }
    void ShowPrompt(std::wstring_view) override { paper += L"?"; }
    void ErasePrompt() override { paper += L"!"; }
    wchar_t ReadKey() override {
        if (keys_.empty()) return L'q';
        const wchar_t key = keys_.front();
        keys_.erase(0, 1);
        return key;
    }

    std::wstring paper;

private:
    std::wstring keys_;
};

std::wstring Shown(const std::wstring& keys, int lines, bool heading = false) {
    PaperScreen screen(keys);
    Pager pager(screen);
    if (heading) pager.Heading(L"H", L"-");
    for (int line = 1; line <= lines; ++line)
        if (!pager.Line(std::to_wstring(line))) break;
    return screen.paper;
}

TEST(Pager, WhatFitsIsShownWithoutAQuestion) {
    EXPECT_EQ(Shown(L"", 4), L"1/2/3/4/");
}

TEST(Pager, TheSpaceBarBringsTheNextPage) {
    EXPECT_EQ(Shown(L" ", 8), L"1/2/3/4/?!5/6/7/8/");
}

TEST(Pager, EnterBringsTheNextLine) {
    EXPECT_EQ(Shown(L"\r\r", 6), L"1/2/3/4/?!5/?!6/");
}

TEST(Pager, QAndEscapeEndIt) {
    EXPECT_EQ(Shown(L"q", 9), L"1/2/3/4/?!");
    EXPECT_EQ(Shown(L"\x1B", 9), L"1/2/3/4/?!");
}

TEST(Pager, OtherKeysAreNoAnswer) {
    EXPECT_EQ(Shown(L"xyz ", 5), L"1/2/3/4/?!5/");
}

TEST(Pager, TheHeaderIsRepeatedOnEachPage) {
    EXPECT_EQ(Shown(L"  ", 6, true), L"H/-/1/2/?!H/-/3/4/?!H/-/5/6/");
}

TEST(Pager, LinesThatWrapTakeMoreRows) {
    PaperScreen screen(L"q");
    Pager pager(screen);
    EXPECT_TRUE(pager.Line(std::wstring(25, L'x')));
    EXPECT_TRUE(pager.Line(L"y"));
    EXPECT_FALSE(pager.Line(L"z"));
}

TEST(Pager, AfterTheEndNothingIsShownOrAsked) {
    PaperScreen screen(L"q  ");
    Pager pager(screen);
    for (int line = 0; line < 4; ++line)
        pager.Line(L"x");
    EXPECT_FALSE(pager.Line(L"x"));
    EXPECT_FALSE(pager.Line(L"x"));
    EXPECT_EQ(screen.paper, L"x/x/x/x/?!");
}

}  // namespace
}  // namespace zu::runner::commands
