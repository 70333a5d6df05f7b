#include "com/Bstr.h"

#include <gtest/gtest.h>

namespace zu::com {
namespace {

TEST(Bstr, ANullTextIsEmpty) {
    EXPECT_TRUE(Bstr().empty());
    EXPECT_EQ(Bstr().get(), nullptr);
    EXPECT_EQ(View(nullptr), L"");
}

TEST(Bstr, KeepsZeroCharacters) {
    const std::wstring text(L"a\0b", 3);
    EXPECT_EQ(Bstr(text).str(), text);
    EXPECT_EQ(Bstr(Bstr(text)).view().size(), 3u);
}

TEST(Bstr, IsCopiedAndMoved) {
    Bstr first(L"text");
    Bstr copy = first;
    EXPECT_NE(copy.get(), first.get());
    EXPECT_EQ(copy.view(), L"text");
    const Bstr moved = std::move(first);
    EXPECT_EQ(moved.view(), L"text");
    copy = Bstr(L"other");
    EXPECT_EQ(copy.view(), L"other");
}

TEST(Bstr, IsPutTogetherFromParts) {
    EXPECT_EQ(Bstr::Joined({L"DBF", L"|", L"C:\\data"}).view(), L"DBF|C:\\data");
    EXPECT_EQ(Bstr::Joined({L"", std::wstring_view(L"a\0b", 3), L""}).view(), std::wstring_view(L"a\0b", 3));
    EXPECT_TRUE(Bstr::Joined({}).empty());
}

TEST(Bstr, GivesItsTextAway) {
    Bstr text(L"text");
    SysFreeString(text.detach());
    EXPECT_EQ(text.get(), nullptr);
}

TEST(Bstr, PutDropsTheOldTextAndAddressKeepsIt) {
    Bstr text(L"old");
    EXPECT_EQ(View(*text.address()), L"old");
    EXPECT_EQ(*text.put(), nullptr);
}

TEST(Bstr, TextOfThePortableCodeIsTheSameText) {
    EXPECT_EQ(AsWide(AsUtf16(L"a\u00fc\U0001F600")), L"a\u00fc\U0001F600");
}

}  // namespace
}  // namespace zu::com
