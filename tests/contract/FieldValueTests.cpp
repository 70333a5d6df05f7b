// DbfFieldValue and Descend.
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using fake::Journal;
using fake::Scene;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FieldValue : public ContractTest {
protected:
    /// What DbfFieldValue makes of a field of this type with this value.
    Variant ValueOf(LONG type, const Variant& content) {
        Scene().fields = {{L"F", type, content}};
        const ComPtr<ZuDataView> view = Select();
        ComPtr<ZuDataFields> fields;
        ComPtr<ZuDataField> field;
        EXPECT_EQ(view->get_Fields(fields.put()), S_OK);
        EXPECT_EQ(fields->get_Item(Variant(L"F"), field.put()), S_OK);
        Journal::OfThread().Clear();
        if (!failing_.empty()) Journal::OfThread().FailOn(failing_);
        return CallWith(field.get());
    }
    Variant CallWith(ZuDataField* field) {
        Variant value(L"old");
        VARIANT result;
        FillMemory(&result, sizeof(result), 0xEE);  // an out-parameter holds anything
        EXPECT_EQ(functions().DbfFieldValue(&field, &result), S_OK);
        return Variant::Adopt(result);
    }

    std::string failing_;
};

TEST_F(FieldValue, AnyValueButNullIsReturnedUnchanged) {
    EXPECT_EQ(ValueOf(VT_BSTR, Variant(L"x")).ToText().view(), L"x");
    EXPECT_THAT(TakeCalls(), ElementsAre("ZuDataField.Value()"));
    EXPECT_EQ(ValueOf(VT_BSTR, Variant(LONG{5})).type(), VT_I4);
    EXPECT_EQ(ValueOf(VT_I4, Variant()).type(), VT_EMPTY);
    EXPECT_EQ(ValueOf(VT_BSTR, Variant(L"")).type(), VT_BSTR);
}

TEST_F(FieldValue, NullTextIsTheEmptyText) {
    const Variant value = ValueOf(VT_BSTR, Variant::Null());
    EXPECT_EQ(value.type(), VT_BSTR);
    EXPECT_TRUE(value.ToText().empty());
    EXPECT_THAT(TakeCalls(), ElementsAre("ZuDataField.Value()", "ZuDataField.Type()"));
}

TEST_F(FieldValue, NullLongTextIsTheEmptyText) {
    const Variant value = ValueOf(100, Variant::Null());
    EXPECT_EQ(value.type(), VT_BSTR);
    EXPECT_TRUE(value.ToText().empty());
}

TEST_F(FieldValue, NullBooleanIsFalse) {
    const Variant value = ValueOf(VT_BOOL, Variant::Null());
    EXPECT_EQ(value.type(), VT_BOOL);
    EXPECT_EQ(value->boolVal, VARIANT_FALSE);
}

TEST_F(FieldValue, NullNumberIsZeroOfItsType) {
    for (const VARTYPE type : {VT_I2, VT_I4, VT_R4, VT_R8, VT_CY, VT_DECIMAL, VT_UI1}) {
        const Variant value = ValueOf(type, Variant::Null());
        EXPECT_EQ(value.type(), type);
        EXPECT_EQ(value.ToDouble(), 0.0) << type;
    }
}

TEST_F(FieldValue, NullDecimalIsAPlainZero) {
    const Variant value = ValueOf(VT_DECIMAL, Variant::Null());
    EXPECT_EQ(value->decVal.scale, 0);
    EXPECT_EQ(value->decVal.sign, 0);
    EXPECT_EQ(value->decVal.Hi32, 0u);
    EXPECT_EQ(value->decVal.Lo64, 0u);
}

TEST_F(FieldValue, NullDateIsTheDateWithTheSerialNumberZero) {
    const Variant value = ValueOf(VT_DATE, Variant::Null());
    EXPECT_EQ(value.type(), VT_DATE);
    EXPECT_EQ(value->date, 0.0);
}

TEST_F(FieldValue, NullObjectIsNoObject) {
    for (const LONG type : {9, 10}) {
        const Variant value = ValueOf(type, Variant::Null());
        EXPECT_EQ(value.type(), VT_DISPATCH) << type;
        EXPECT_EQ(value->pdispVal, nullptr) << type;
    }
}

TEST_F(FieldValue, NullOfAnyOtherTypeStaysNull) {
    for (const LONG type : {0, 1, 12, 13, 16, 18, 20, 99, 101, 0x2011, -1, 0x10002}) {
        EXPECT_EQ(ValueOf(type, Variant::Null()).type(), VT_NULL) << type;
    }
}

TEST_F(FieldValue, FailureIsEmpty) {
    failing_ = "ZuDataField.Value";
    EXPECT_EQ(ValueOf(VT_BSTR, Variant(L"x")).type(), VT_EMPTY);
    failing_ = "ZuDataField.Type";
    EXPECT_EQ(ValueOf(VT_BSTR, Variant::Null()).type(), VT_EMPTY);
}

TEST_F(FieldValue, NoFieldIsEmpty) {
    EXPECT_EQ(CallWith(nullptr).type(), VT_EMPTY);
    Variant value;
    EXPECT_EQ(functions().DbfFieldValue(nullptr, value.put()), S_OK);
    EXPECT_EQ(value.type(), VT_EMPTY);
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

class Descending : public ContractTest {
protected:
    Variant Descend(Variant value, BSTR* technology) {
        Variant result;
        EXPECT_EQ(functions().Descend(value.address(), technology, result.put()), S_OK);
        return result;
    }
};

TEST_F(Descending, GoesToTheDatabaseServiceWithTheTechnologyGiven) {
    Bstr technology(L"X");
    EXPECT_EQ(Descend(Variant(L"SMITH"), technology.address()).ToText().view(), L"descended");
    EXPECT_THAT(TakeCalls(),
                ElementsAre("ZuEngineData.DatabaseService()", "ZuDatabaseService.Descend(\"SMITH\", \"X\")"));
    EXPECT_EQ(LiveObjects(), 0u);
}

TEST_F(Descending, OmittedTechnologyIsTheDefaultOne) {
    EXPECT_EQ(Descend(Variant(LONG{5}), nullptr).type(), VT_BSTR);
    EXPECT_THAT(TakeCalls(), ElementsAre("ZuEngineData.DefaultTechnology()", "ZuEngineData.DatabaseService()",
                                         "ZuDatabaseService.Descend(I4 5, \"T\")"));
    BSTR none = nullptr;
    Descend(Variant(LONG{5}), &none);
    EXPECT_EQ(TakeCalls().front(), "ZuEngineData.DefaultTechnology()");
}

TEST_F(Descending, EmptyTechnologyIsGiven) {
    Bstr technology(L"");
    Descend(Variant(LONG{5}), technology.address());
    EXPECT_THAT(TakeCalls(),
                ElementsAre("ZuEngineData.DatabaseService()", "ZuDatabaseService.Descend(I4 5, \"\")"));
}

TEST_F(Descending, ValueByReferenceIsLookedThrough) {
    Variant text(L"SMITH");
    VARIANT variable{};
    variable.vt = VT_BYREF | VT_VARIANT;
    variable.pvarVal = text.address();
    Variant result;
    EXPECT_EQ(functions().Descend(&variable, nullptr, result.put()), S_OK);
    EXPECT_EQ(TakeCalls().back(), "ZuDatabaseService.Descend(\"SMITH\", \"T\")");
}

TEST_F(Descending, FailureIsEmpty) {
    for (const char* operation :
         {"ZuEngineData.DefaultTechnology", "ZuEngineData.DatabaseService", "ZuDatabaseService.Descend"}) {
        Journal::OfThread().FailOn(operation);
        EXPECT_EQ(Descend(Variant(LONG{5}), nullptr).type(), VT_EMPTY) << operation;
        Journal::OfThread().Clear();
    }
}

}  // namespace zu::contract
