// The component on a machine where no engine is to be had: the name leads to a file that is not there.
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::ComPtr;
using com::Variant;

class NoEngine : public ContractTest {};

TEST_F(NoEngine, NameLeadsNowhere) {
    EXPECT_FALSE(Create(L"Zuengine.Zuproject"));
}

TEST_F(NoEngine, ObjectsOfAllClassesCanBeCreatedAllTheSame) {
    for (const wchar_t* name : {L"Functions", L"ZuDbRef", L"ZuDbfControl", L"ZuImportFormats",
                                L"ZuImportFormat", L"ZuExportFormats", L"ZuExportFormat"}) {
        EXPECT_TRUE(Create((std::wstring(L"ZuDBFFunctions.") + name).c_str()));
    }
}

TEST_F(NoEngine, TablesCannotBeOpened) {
    EXPECT_FALSE(Open(L"orders"));
    EXPECT_FALSE(Open(L"X|sales>orders"));
    EXPECT_FALSE(Select());
    EXPECT_FALSE(Lookup(Variant(L"SMITH")));
    EXPECT_FALSE(Lookup(Variant(L"A=1")));
    EXPECT_EQ(Count(), -1);
    ComPtr<ZuDataView> view;
    EXPECT_EQ(functions().DbfVarDeclare(Variant(L"X|d>t"), view.put()), S_OK);
    EXPECT_FALSE(view);
}

TEST_F(NoEngine, ThereIsNoCurrentView) {
    VARIANT_BOOL flag = VARIANT_TRUE;
    LONG number = 5;
    EXPECT_EQ(functions().DbfTop(nullptr, &flag), S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
    flag = VARIANT_TRUE;
    EXPECT_EQ(functions().DbfBottom(nullptr, &flag), S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
    EXPECT_EQ(functions().DbfRecNo(nullptr, &number), S_OK);
    EXPECT_EQ(number, 0);
}

TEST_F(NoEngine, NothingDescends) {
    Variant value(L"A");
    Variant result(L"old");
    EXPECT_EQ(functions().Descend(value.address(), nullptr, result.put()), S_OK);
    EXPECT_EQ(result.type(), VT_EMPTY);
}

TEST_F(NoEngine, TenThousandObjectsDoNoHarm) {
    for (int round = 0; round < 10000; ++round) {
        const auto object = Create(L"ZuDBFFunctions.Functions").tryAs<_Functions>();
        ASSERT_TRUE(object);
        LONG count = 0;
        object->DbfCount(Variant(L"d>t"), nullptr, &count);
        ASSERT_EQ(count, -1);
    }
}

}  // namespace zu::contract
