#include "host/service/FieldSelection.h"

#include <gtest/gtest.h>

#include "LateBound.h"
#include "ScriptObject.h"
#include "com/ComError.h"
#include "com/SafeArray.h"
#include "com/Variant.h"
#include "portable/error/Error.h"

namespace zu::host {
namespace {

using test::Number;
using test::Text;
using Positions = std::vector<std::size_t>;

const Positions kAll{0, 1, 2};

ViewFields Fields() {
    ViewFields fields;
    for (const char* name : {"NAME", "Age", "long name"}) {
        technologies::FieldDescription field;
        field.name = name;
        fields.emplace_back(field);
    }
    return fields;
}

Positions Choose(const VARIANT& choice) {
    return ChooseFields(choice, Fields(), "PEOPLE").value_or(kAll);
}

std::string Fault(const VARIANT& choice) {
    try {
        Choose(choice);
        return "no error";
    } catch (const Error& error) {
        return error.what();
    }
}

TEST(FieldSelection, NothingBlankAndAnEmptyArrayMeanAllFields) {
    EXPECT_EQ(Choose(com::Variant::Missing()), kAll);
    EXPECT_EQ(Choose(com::Variant()), kAll);
    EXPECT_EQ(Choose(com::Variant::Null()), kAll);
    EXPECT_EQ(Choose(Text(L"")), kAll);
    EXPECT_EQ(Choose(Text(L"  ")), kAll);
    EXPECT_EQ(Choose(com::SafeArray::Of({}).ToVariant()), kAll);
    EXPECT_EQ(Choose(com::SafeArray::NoArguments().ToVariant()), kAll);
}

TEST(FieldSelection, NamesAreSeparatedByCommasAndFoundInAnyCase) {
    EXPECT_EQ(Choose(Text(L"age")), Positions{1});
    EXPECT_EQ(Choose(Text(L" AGE , Name")), (Positions{1, 0}));
    EXPECT_EQ(Choose(Text(L"[long name],age")), (Positions{2, 1}));
    EXPECT_EQ(Choose(Text(L"long name")), Positions{2});
}

TEST(FieldSelection, TheNumberZeroMeansNoFields) {
    EXPECT_EQ(Choose(Number(0)), Positions{});
    EXPECT_EQ(Choose(com::Variant(SHORT{0})), Positions{});
    EXPECT_EQ(Choose(com::Variant(0.0)), Positions{});
}

TEST(FieldSelection, AnotherNumberMeansThatField) {
    EXPECT_EQ(Choose(Number(2)), Positions{2});
    EXPECT_EQ(Choose(com::Variant(1.0)), Positions{1});
}

TEST(FieldSelection, ArraysHoldNamesAndNumbersFromZero) {
    EXPECT_EQ(Choose(com::SafeArray::Of({Text(L"age"), Number(0)}).ToVariant()), (Positions{1, 0}));
    EXPECT_EQ(Choose(com::SafeArray::Of({Number(0)}).ToVariant()), Positions{0});
}

TEST(FieldSelection, TypedArraysAndOtherLowerBoundsAreRead) {
    SAFEARRAYBOUND bound{2, 1};
    SAFEARRAY* longs = SafeArrayCreate(VT_I4, 1, &bound);
    LONG index = 1;
    LONG number = 2;
    SafeArrayPutElement(longs, &index, &number);
    index = 2;
    number = 0;
    SafeArrayPutElement(longs, &index, &number);
    VARIANT value;
    value.vt = VT_ARRAY | VT_I4;
    value.parray = longs;
    EXPECT_EQ(Choose(value), (Positions{2, 0}));
    VARIANT reference;
    reference.vt = VT_BYREF | VT_ARRAY | VT_I4;
    reference.pparray = &longs;
    EXPECT_EQ(Choose(reference), (Positions{2, 0}));
    SafeArrayDestroy(longs);
}

TEST(FieldSelection, AScriptsOwnArrayIsRead) {
    const auto member = [](const com::Variant& value) {
        return [value](std::vector<VARIANT*>&, VARIANT* result, EXCEPINFO*) {
            return VariantCopy(result, const_cast<VARIANT*>(&value.get()));
        };
    };
    const com::ComPtr<test::ScriptObject> array = test::ScriptObject::Make();
    array->Add(L"length", member(Number(2)));
    array->Add(L"0", member(Text(L"Age")));
    array->Add(L"1", member(com::Variant(0.0)));
    EXPECT_EQ(Choose(com::Variant(array.get())), (Positions{1, 0}));
}

TEST(FieldSelection, ReferencesAreLookedThrough) {
    com::Variant inner = Text(L"age");
    VARIANT reference;
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = inner.address();
    EXPECT_EQ(Choose(reference), Positions{1});
}

TEST(FieldSelection, AFieldThatDoesNotExistIsNamed) {
    EXPECT_EQ(Fault(Text(L"age,colour")), "Table PEOPLE has no field \"colour\"");
    EXPECT_EQ(Fault(Text(L"age,")), "Table PEOPLE has no field \"\"");
    EXPECT_EQ(Fault(Number(3)), "Table PEOPLE has no field 3, there are 3 counted from 0");
    EXPECT_EQ(Fault(Number(-1)), "Table PEOPLE has no field -1, there are 3 counted from 0");
    EXPECT_EQ(Fault(com::SafeArray::Of({Number(9)}).ToVariant()),
              "Table PEOPLE has no field 9, there are 3 counted from 0");
}

TEST(FieldSelection, OtherValuesAreNamedWithTheirTable) {
    for (const com::Variant& choice : {com::Variant(true), com::Variant(1.5)})
        EXPECT_TRUE(Fault(choice).starts_with("The fields of table PEOPLE are chosen by names"));
    for (const com::Variant& element : {com::Variant(true), com::Variant()})
        EXPECT_TRUE(Fault(com::SafeArray::Of({element}).ToVariant())
                        .starts_with("The list of fields for table PEOPLE"));
}

TEST(WholeNumbers, AreNumericValuesWithoutAFraction) {
    EXPECT_EQ(WholeNumber(com::Variant(2147483647.0)), 2147483647);
    EXPECT_FALSE(WholeNumber(com::Variant(2147483648.0)));
    EXPECT_FALSE(WholeNumber(Text(L"3")));
    EXPECT_FALSE(WholeNumber(com::Variant(true)));
}

}  // namespace
}  // namespace zu::host
