#include "runner/TextOutput.h"

#include <gtest/gtest.h>

#include "com/ComError.h"

namespace zu::runner {
namespace {

// What arrives at the other end of standard output.
template <class Action>
std::string Captured(const wchar_t* lineEnd, Action&& action) {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    const HANDLE before = GetStdHandle(STD_OUTPUT_HANDLE);
    CreatePipe(&read, &write, nullptr, 1U << 16);
    SetStdHandle(STD_OUTPUT_HANDLE, write);
    TextOutput output(STD_OUTPUT_HANDLE, lineEnd);
    action(output);
    SetStdHandle(STD_OUTPUT_HANDLE, before);
    CloseHandle(write);
    std::string bytes(1U << 16, '\0');
    DWORD count = 0;
    if (!ReadFile(read, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr)) count = 0;
    CloseHandle(read);
    bytes.resize(count);
    return bytes;
}

TEST(TextOutput, WritesUtf8AlsoBeyondTheBasicPlane) {
    EXPECT_EQ(Captured(L"\n", [](TextOutput& output) { output.Write(L"\u00E9\u20AC\xD83D\xDE00"); }),
              "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(TextOutput, EndsLinesAsItIsTold) {
    EXPECT_EQ(Captured(L"\r\n", [](TextOutput& output) { output.WriteLine(L"a"); }), "a\r\n");
    EXPECT_EQ(Captured(L"\n", [](TextOutput& output) { output.WriteLine(L""); }), "\n");
}

TEST(TextOutput, TurnsLineFeedsOfReportsIntoLineEnds) {
    EXPECT_EQ(Captured(L"\r\n", [](TextOutput& output) { output.WriteLines(L"a\nb"); }), "a\r\nb\r\n");
    EXPECT_EQ(Captured(L"\r\n", [](TextOutput& output) { output.WriteLine(L"a\nb"); }), "a\nb\r\n");
}

TEST(TextOutput, SaysWhenTheOtherEndIsGone) {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    const HANDLE before = GetStdHandle(STD_OUTPUT_HANDLE);
    CreatePipe(&read, &write, nullptr, 0);
    SetStdHandle(STD_OUTPUT_HANDLE, write);
    TextOutput output(STD_OUTPUT_HANDLE, L"\n");
    CloseHandle(read);
    EXPECT_THROW(output.WriteLine(L"x"), com::ComError);
    SetStdHandle(STD_OUTPUT_HANDLE, before);
    CloseHandle(write);
}

}  // namespace
}  // namespace zu::runner
