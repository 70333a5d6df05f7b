#include "host/engine/MessageCatalogue.h"

#include <gtest/gtest.h>

namespace zu::host {
namespace {

TEST(MessageCatalogue, HoldsEveryCodeThatFunctionsUse) {
    for (const std::uint32_t code : {0x80041017u, 0x8004102Cu, 0x8004102Du, 0x8004102Eu, 0x8004102Fu,
                                     0x80041030u, 0x80041031u, 0x8004103Cu, 0x80041042u})
        EXPECT_TRUE(IsKnownMessage(code)) << std::hex << code;
    EXPECT_FALSE(IsKnownMessage(0x80041018u));
}

TEST(MessageCatalogue, PutsArgumentsInTheirPlaces) {
    EXPECT_EQ(MessageText(0x8004102Du, {L"3", L"17"}), L"Record 3 of 17");
    EXPECT_EQ(MessageText(0x80041042u, {L"18", L"17"}), L"New record 18 (17 saved)");
    EXPECT_EQ(MessageText(0x80041017u, {L"5", L"expected a value"}),
              L"The condition cannot be understood at position 5: expected a value");
    EXPECT_EQ(MessageText(0x8004102Cu, {L"DbfProcess"}),
              L"DbfProcess needs the name of the routine to call.");
    EXPECT_EQ(MessageText(0x80041030u, {L"Smith"}), L"\"Smith\" was not found.");
}

TEST(MessageCatalogue, LeavesPlacesEmptyWhenArgumentsAreMissingAndIgnoresOthers) {
    EXPECT_EQ(MessageText(0x8004102Du, {L"3"}), L"Record 3 of ");
    EXPECT_EQ(MessageText(0x8004102Du, {L"3", L"4", L"5"}), L"Record 3 of 4");
}

TEST(MessageCatalogue, ArgumentsAreNotSearchedForPlaces) {
    EXPECT_EQ(MessageText(0x80041030u, {L"100%1"}), L"\"100%1\" was not found.");
}

TEST(MessageCatalogue, AnUnknownCodeShowsItsNumberAndArguments) {
    EXPECT_EQ(MessageText(0x80041099u, {}), L"Error 0x80041099");
    EXPECT_EQ(MessageText(0x80041099u, {L"a", L"b"}), L"Error 0x80041099: a, b");
}

TEST(MessageCatalogue, QuestionsNeedNoArguments) {
    EXPECT_NE(MessageText(0x8004102Eu, {}), MessageText(0x8004102Fu, {}));
    EXPECT_NE(MessageText(0x80041031u, {}).find(L"pairs"), std::wstring::npos);
}

}  // namespace
}  // namespace zu::host
