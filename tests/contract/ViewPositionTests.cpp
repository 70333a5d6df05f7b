// DbfTop, DbfBottom, DbfRecNo.
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::ComPtr;
using com::Variant;
using fake::FieldContent;
using fake::Journal;
using fake::Scene;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ViewPosition : public ContractTest {
protected:
    bool Top(VARIANT* view) { return Boolean(&_Functions::DbfTop, view); }
    bool Bottom(VARIANT* view) { return Boolean(&_Functions::DbfBottom, view); }
    LONG RecNo(VARIANT* view) {
        LONG number = 12345;
        EXPECT_EQ(functions().DbfRecNo(view, &number), S_OK);
        return number;
    }
    /// A view at this position of this many records.
    Variant ViewAt(LONG position, LONG records) {
        Scene().position = position;
        Scene().records = records;
        Variant view(Select().get());
        TakeCalls();
        return view;
    }
    static void SetRecordNumber(const Variant& value) { Scene().fields = {{L"##RECNO", VT_I4, value}}; }

private:
    bool Boolean(HRESULT (STDMETHODCALLTYPE _Functions::*function)(VARIANT*, VARIANT_BOOL*), VARIANT* view) {
        VARIANT_BOOL result = 77;
        EXPECT_EQ((functions().*function)(view, &result), S_OK);
        EXPECT_TRUE(result == VARIANT_TRUE || result == VARIANT_FALSE);
        return result != VARIANT_FALSE;
    }
};

TEST_F(ViewPosition, TopIsPositionZero) {
    Variant view = ViewAt(0, 3);
    EXPECT_TRUE(Top(view.address()));
    EXPECT_THAT(TakeCalls(), ElementsAre("ZuDataView.AbsolutePosition(0)"));
    view = ViewAt(1, 3);
    EXPECT_FALSE(Top(view.address()));
}

TEST_F(ViewPosition, BottomIsTheLastRecord) {
    Variant view = ViewAt(2, 3);
    EXPECT_TRUE(Bottom(view.address()));
    EXPECT_THAT(TakeCalls(), ElementsAre("ZuDataView.AbsolutePosition(0)", "ZuDataView.RecordCount(0)"));
    view = ViewAt(1, 3);
    EXPECT_FALSE(Bottom(view.address()));
}

TEST_F(ViewPosition, OneRecordIsTopAndBottom) {
    Variant view = ViewAt(0, 1);
    EXPECT_TRUE(Top(view.address()));
    EXPECT_TRUE(Bottom(view.address()));
}

TEST_F(ViewPosition, EmptyViewIsAtTheTopAndNotAtTheBottom) {
    Variant view = ViewAt(0, 0);
    EXPECT_TRUE(Top(view.address()));
    EXPECT_FALSE(Bottom(view.address()));
}

TEST_F(ViewPosition, RecNoIsThePhysicalNumberWhereTheViewCarriesIt) {
    SetRecordNumber(Variant(LONG{4711}));
    Variant view = ViewAt(1, 3);
    EXPECT_EQ(RecNo(view.address()), 4711);
    EXPECT_THAT(TakeCalls(), ElementsAre("ZuDataView.AbsolutePosition(0)", "ZuDataView.Fields()",
                                         "ZuDataFields.Item(\"##RECNO\")", "ZuDataField.Value()"));
}

TEST_F(ViewPosition, RecNoIsConvertedToALong) {
    Variant view = ViewAt(1, 3);
    for (const auto& [value, number] : std::vector<std::pair<Variant, LONG>>{
             {Variant(L"123"), 123}, {Variant(7.0), 7}, {Variant(SHORT{9}), 9}, {Variant(true), -1}}) {
        SetRecordNumber(value);
        EXPECT_EQ(RecNo(view.address()), number);
    }
}

TEST_F(ViewPosition, RecNoIsThePositionInAViewWithoutTheField) {
    Variant view = ViewAt(2, 3);
    EXPECT_EQ(RecNo(view.address()), 2);
}

TEST_F(ViewPosition, RecNoIsThePositionWhenTheNumberIsNone) {
    Variant view = ViewAt(2, 3);
    for (const Variant& value : {Variant::Null(), Variant(L"none"), Variant(1e300)}) {
        SetRecordNumber(value);
        EXPECT_EQ(RecNo(view.address()), 2);
    }
}

TEST_F(ViewPosition, RecNoIsThePositionWhateverFailsAfterIt) {
    SetRecordNumber(Variant(LONG{4711}));
    Variant view = ViewAt(2, 3);
    for (const char* operation : {"ZuDataView.Fields", "ZuDataFields.Item", "ZuDataField.Value"}) {
        Journal::OfThread().FailOn(operation);
        EXPECT_EQ(RecNo(view.address()), 2) << operation;
        Journal::OfThread().Clear();
    }
    for (const char* operation : {"ZuDataView.Fields", "ZuDataFields.Item"}) {
        Journal::OfThread().AnswerNothingOn(operation);
        EXPECT_EQ(RecNo(view.address()), 2) << operation;
        Journal::OfThread().Clear();
    }
}

TEST_F(ViewPosition, RecNoIsZeroWhenEvenThePositionFails) {
    Variant view = ViewAt(2, 3);
    Journal::OfThread().FailOn("ZuDataView.AbsolutePosition");
    EXPECT_EQ(RecNo(view.address()), 0);
    EXPECT_FALSE(Top(view.address()));
    EXPECT_FALSE(Bottom(view.address()));
}

TEST_F(ViewPosition, OmittedViewIsTheOneBeingProcessed) {
    Scene().contextItems[106] = ViewAt(2, 3);
    TakeCalls();
    EXPECT_FALSE(Top(nullptr));
    EXPECT_THAT(TakeCalls(),
                ElementsAre("ZuEngineContext.ContextItemHandle(6)", "ZuEngineContext.ContextItem(106)",
                            "ZuDataView.AbsolutePosition(0)"));
    Variant missing = Variant::Missing();
    EXPECT_TRUE(Bottom(missing.address()));
    EXPECT_EQ(RecNo(missing.address()), 2);
}

TEST_F(ViewPosition, OmittedViewOutsideARunIsAFailure) {
    EXPECT_FALSE(Top(nullptr));
    EXPECT_FALSE(Bottom(nullptr));
    EXPECT_EQ(RecNo(nullptr), 0);
}

TEST_F(ViewPosition, ValueThatIsNoViewIsAFailure) {
    for (Variant value : {Variant(LONG{5}), Variant(L"view"), Variant(), Variant::Null(),
                          Variant(static_cast<IDispatch*>(nullptr)), Variant(functions_.get())}) {
        EXPECT_FALSE(Top(value.address())) << value.type();
        EXPECT_FALSE(Bottom(value.address())) << value.type();
        EXPECT_EQ(RecNo(value.address()), 0) << value.type();
    }
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(ViewPosition, ViewByReferenceInAnyWrappingIsLookedThrough) {
    Variant view = ViewAt(1, 2);
    VARIANT variable{};
    variable.vt = VT_BYREF | VT_VARIANT;
    variable.pvarVal = view.address();
    EXPECT_TRUE(Bottom(&variable));

    IDispatch* object = view->pdispVal;
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_DISPATCH;
    reference.ppdispVal = &object;
    EXPECT_TRUE(Bottom(&reference));

    VARIANT unknown{};
    unknown.vt = VT_UNKNOWN;
    unknown.punkVal = object;
    EXPECT_TRUE(Bottom(&unknown));
}

TEST_F(ViewPosition, NullResultPointersAreRefused) {
    EXPECT_EQ(functions().DbfTop(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(functions().DbfBottom(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(functions().DbfRecNo(nullptr, nullptr), E_POINTER);
}

}  // namespace zu::contract
