// Table definitions as the public functions take them: seen from the names with which the table is opened.
#include "com/ComError.h"
#include "tests/contract/Arrays.h"
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::ComPtr;
using com::Variant;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

const std::string kDefault = "ZuEngineData.DefaultTechnology()";

class TableDefinition : public ContractTest {
protected:
    /// The calls that opening the definition makes.
    Calls CallsFor(const VARIANT& definition) {
        TakeCalls();
        Open(definition);
        return TakeCalls();
    }
    Calls CallsFor(std::wstring_view definition) { return CallsFor(Variant(definition)); }
};

TEST_F(TableDefinition, NameAloneIsADatabaseOfTheDefaultTechnology) {
    EXPECT_EQ(CallsFor(L"orders"), Calls{kDefault} + Opened("T|orders", ""));
}

TEST_F(TableDefinition, GreaterThanSignSeparatesDatabaseAndTable) {
    EXPECT_EQ(CallsFor(L"sales>orders"), Calls{kDefault} + Opened("T|sales", "orders"));
}

TEST_F(TableDefinition, TechnologyThatIsGivenIsKept) {
    EXPECT_EQ(CallsFor(L"X|sales>orders"), Opened("X|sales", "orders"));
}

TEST_F(TableDefinition, EmptyTextIsTheDefaultTechnologyWithNothingBehindIt) {
    EXPECT_EQ(CallsFor(L""), Calls{kDefault} + Opened("T|", ""));
}

TEST_F(TableDefinition, OnlyTheFirstGreaterThanSignSplits) {
    EXPECT_EQ(CallsFor(L"a>b>c"), Calls{kDefault} + Opened("T|a", "b>c"));
}

TEST_F(TableDefinition, LeadingBarCountsAsATechnology) {
    EXPECT_EQ(CallsFor(L"|x"), Opened("|x", ""));
}

TEST_F(TableDefinition, BarInTheTableNameIsNoTechnology) {
    EXPECT_EQ(CallsFor(L"a>b|c"), Calls{kDefault} + Opened("T|a", "b|c"));
}

TEST_F(TableDefinition, NameWithNothingBehindTheSignHasNoTable) {
    EXPECT_EQ(CallsFor(L"a>"), Calls{kDefault} + Opened("T|a", ""));
}

TEST_F(TableDefinition, NameWithNothingBeforeTheSignHasNoDatabase) {
    EXPECT_EQ(CallsFor(L">b"), Calls{kDefault} + Opened("T|", "b"));
}

TEST_F(TableDefinition, TextByReferenceIsLookedThrough) {
    Variant text(L"X|a>b");
    VARIANT variable = ReferenceTo(text);
    EXPECT_EQ(CallsFor(variable), Opened("X|a", "b"));

    com::Bstr characters(L"X|c>d");
    VARIANT reference{};
    reference.vt = VT_BSTR | VT_BYREF;
    reference.pbstrVal = characters.address();
    EXPECT_EQ(CallsFor(reference), Opened("X|c", "d"));
}

TEST_F(TableDefinition, ArrayOfOneIsADatabaseWithoutTable) {
    EXPECT_EQ(CallsFor(Array({L"sales"})), Calls{kDefault} + Opened("T|sales", ""));
}

TEST_F(TableDefinition, ArrayOfTwoHasTheFixedTableNameOne) {
    EXPECT_EQ(CallsFor(Array({L"sales", L"orders"})), Calls{kDefault} + Opened("T|sales", "1"));
}

TEST_F(TableDefinition, ArrayOfThreeIsTechnologyAndDatabaseWithTheFixedTableNameTwo) {
    EXPECT_EQ(CallsFor(Array({L"X", L"sales", L"orders"})), Opened("X|sales", "2"));
}

TEST_F(TableDefinition, ArrayElementsFromTheThirdOnAreNotRead) {
    const Variant unreadable = Variant::Null();
    EXPECT_EQ(CallsFor(Array({Variant(L"X"), Variant(L"sales"), unreadable, unreadable})),
              Opened("X|sales", "2"));
}

TEST_F(TableDefinition, SecondElementOfTwoIsNotRead) {
    EXPECT_EQ(CallsFor(Array({Variant(L"X|sales"), Variant::Null()})), Opened("X|sales", "1"));
}

TEST_F(TableDefinition, ArrayElementIsNotSplit) {
    EXPECT_EQ(CallsFor(Array({L"a>b"})), Calls{kDefault} + Opened("T|a>b", ""));
}

TEST_F(TableDefinition, ArrayElementWithABarNamesItsTechnology) {
    EXPECT_EQ(CallsFor(Array({L"X|a", L"b"})), Opened("X|a", "1"));
}

TEST_F(TableDefinition, ArrayByReferenceInAnyWrappingIsLookedThrough) {
    Variant array = Array({L"X", L"a", L"b"});
    VARIANT reference{};
    reference.vt = VT_ARRAY | VT_VARIANT | VT_BYREF;
    reference.pparray = &array.address()->parray;
    EXPECT_EQ(CallsFor(reference), Opened("X|a", "2"));

    EXPECT_EQ(CallsFor(ReferenceTo(array)), Opened("X|a", "2"));

    Variant wrapped;
    *wrapped.address() = reference;
    EXPECT_EQ(CallsFor(ReferenceTo(wrapped)), Opened("X|a", "2"));
    VariantInit(wrapped.address());
}

TEST_F(TableDefinition, TypedArraysAreReadAsText) {
    EXPECT_EQ(CallsFor(TextArray({L"X", L"a"}, 0)), Calls{kDefault} + Opened("T|X", "1"));
    EXPECT_EQ(CallsFor(TextArray({L"X", L"a", L"b"}, 0)), Opened("X|a", "2"));
    EXPECT_EQ(CallsFor(LongArray({7, 8, 9}, 0)), Opened("7|8", "2"));
    EXPECT_EQ(CallsFor(LongArray({7}, 0)), Calls{kDefault} + Opened("T|7", ""));
}

TEST_F(TableDefinition, NumbersAndNullsInAnArrayAreJoinedAsText) {
    EXPECT_EQ(CallsFor(Array({Variant(LONG{5}), Variant(1.5), Variant(L"")})), Opened("5|1.5", "2"));
    EXPECT_EQ(CallsFor(Array({Variant::Null(), Variant(L"a"), Variant(L"")})), Opened("|a", "2"));
    EXPECT_EQ(CallsFor(Array({Variant()})), Calls{kDefault} + Opened("T|", ""));
}

TEST_F(TableDefinition, NullAloneInAnArrayIsNoDefinition) {
    EXPECT_THAT(CallsFor(Array({Variant::Null()})), IsEmpty());
}

TEST_F(TableDefinition, UpperBoundCountsWithOtherLowerBounds) {
    // -1 To 1: elements 0 and 1 exist, the upper bound is 1.
    EXPECT_EQ(CallsFor(TextArray({L"unread", L"X|a", L"b"}, -1)), Opened("X|a", "1"));
    // 1 To 1: there is no element 0.
    EXPECT_THAT(CallsFor(TextArray({L"X|a"}, 1)), IsEmpty());
    // 1 To 3: the same.
    EXPECT_THAT(CallsFor(TextArray({L"X", L"a", L"b"}, 1)), IsEmpty());
}

TEST_F(TableDefinition, EmptyArrayIsNoDefinition) {
    EXPECT_THAT(CallsFor(Array(std::vector<Variant>())), IsEmpty());
    EXPECT_THAT(CallsFor(TextArray({L"a"}, -1)), IsEmpty());  // -1 To -1
    EXPECT_THAT(CallsFor(UndimensionedArray()), IsEmpty());
}

TEST_F(TableDefinition, ArrayOfArraysIsNoDefinition) {
    EXPECT_THAT(CallsFor(Array({Array({L"X"}), Array({L"a"})})), IsEmpty());
    EXPECT_THAT(CallsFor(Array({Array({L"X"}), Variant(L"a"), Variant(L"b")})), IsEmpty());
}

TEST_F(TableDefinition, ArrayOfTwoDimensionsIsNoDefinition) {
    EXPECT_THAT(CallsFor(TwoDimensionalArray()), IsEmpty());
}

TEST_F(TableDefinition, ArrayOfElementsWithoutTextIsNoDefinition) {
    EXPECT_THAT(CallsFor(Array({Variant(static_cast<IDispatch*>(nullptr))})), IsEmpty());
}

TEST_F(TableDefinition, AnyOtherContentIsNoDefinition) {
    const std::vector<Variant> contents = {Variant(LONG{7}), Variant(1.5),    Variant(true),
                                           Variant(),        Variant::Null(), Variant(functions_.get())};
    for (const Variant& content : contents) {
        EXPECT_THAT(CallsFor(content), IsEmpty()) << content.type();
        EXPECT_FALSE(Open(content)) << content.type();
    }
}

TEST_F(TableDefinition, FailureOfTheDefaultTechnologyLeavesTheNameWithoutIt) {
    fake::Journal::OfThread().FailOn("ZuEngineData.DefaultTechnology");
    EXPECT_TRUE(Open(L"sales>orders"));
    EXPECT_EQ(TakeCalls(), Calls{kDefault} + Opened("sales", "orders"));
}

TEST_F(TableDefinition, LongNamesAndForeignCharactersGoThrough) {
    const std::wstring name = L"X|" + std::wstring(5000, L'n');
    EXPECT_EQ(CallsFor(name), Opened("X|" + std::string(5000, 'n'), ""));
    EXPECT_EQ(CallsFor(L"X|gr\u00fc\u00dfe>t"), Opened("X|gr??e", "t"));
}

TEST_F(TableDefinition, TextWithANulCharacterIsTakenWhole) {
    EXPECT_EQ(CallsFor(std::wstring_view(L"X|a\0b>c", 7)), Opened(std::string("X|a\0b", 5), "c"));
}

}  // namespace zu::contract
