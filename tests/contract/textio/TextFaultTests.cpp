// Every call that an export or import makes on the engine fails once, and answers nothing once: nothing may
// be left behind, and the function must work again right after.
#include "tests/contract/fake/FakeParser.h"
#include "tests/contract/textio/TextTest.h"

namespace zu::contract {

using com::Variant;
using fake::Journal;
using fake::Scene;

class TextFaults : public TextTest {
protected:
    void SetUp() override {
        TextTest::SetUp();
        Scene().records = 2;
        Scene().fields = {{L"A", VT_I4, Variant(LONG{1}), 11, 0}, {L"B", VT_DECIMAL, Variant(LONG{2}), 5, 1}};
        Scene().evaluates = [](fake::FakeParser&) { return Variant(true); };
    }

    static void ExpectNothingLeft() {
        EXPECT_EQ(LiveObjects(), 0u) << Journal::OfThread().faultyOperation() << ": "
                                     << Journal::OfThread().LiveText();
    }
};

TEST_F(TextFaults, FailureOfEachCallInTurnEndsAnExport) {
    int n = 1;
    for (;; ++n) {
        Journal::OfThread().Clear();
        Journal::OfThread().FailAt(n);
        const bool result = ToFile();
        if (!Journal::OfThread().faultPlayed()) {
            EXPECT_TRUE(result);
            break;
        }
        EXPECT_FALSE(result) << Journal::OfThread().faultyOperation();
        ExpectNothingLeft();
        Journal::OfThread().Clear();
        ASSERT_TRUE(ToFile());
        EXPECT_EQ(Content(), "1,2\r\n1,2\r\n");
    }
    EXPECT_GT(n, 20);
}

TEST_F(TextFaults, NothingFromEachCallInTurnDoesNoHarmToAnExport) {
    for (int n = 1; n < 100; ++n) {
        Journal::OfThread().Clear();
        Journal::OfThread().AnswerNothingAt(n);
        ToFile();
        if (!Journal::OfThread().faultPlayed()) break;
        ExpectNothingLeft();
        Journal::OfThread().Clear();
        ASSERT_TRUE(ToFile());
    }
}

TEST_F(TextFaults, FailureOfEachCallInTurnFailsAnImportOrOneOfItsLines) {
    int n = 1;
    for (;; ++n) {
        Put("1,2\r\n3,4\r\n");
        Journal::OfThread().Clear();
        Journal::OfThread().FailAt(n);
        const bool result = FromFile(nullptr, nullptr, L"A>0");
        if (!Journal::OfThread().faultPlayed()) {
            EXPECT_TRUE(result);
            EXPECT_EQ(Outputs(), "I4 2, I4 2, Empty");
            break;
        }
        const std::string operation = Journal::OfThread().faultyOperation();
        // Without an index records are added all the same.
        if (operation != "DataTable.OpenIndex") {
            EXPECT_FALSE(result && added_.ToLong() == 2) << operation;
        }
        ExpectNothingLeft();
        Journal::OfThread().Clear();
        ASSERT_TRUE(FromFile(nullptr, nullptr, L"A>0")) << "after " << operation;
    }
    EXPECT_GT(n, 20);
}

TEST_F(TextFaults, NothingFromEachCallInTurnDoesNoHarmToAnImport) {
    for (int n = 1; n < 100; ++n) {
        Put("1,2\r\n3,4\r\n");
        Journal::OfThread().Clear();
        Journal::OfThread().AnswerNothingAt(n);
        FromFile(nullptr, nullptr, L"A>0");
        if (!Journal::OfThread().faultPlayed()) break;
        ExpectNothingLeft();
        Journal::OfThread().Clear();
        ASSERT_TRUE(FromFile(nullptr, nullptr, L"A>0"));
    }
}

}  // namespace zu::contract
