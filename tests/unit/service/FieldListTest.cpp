#include "ServiceTest.h"
#include "com/ComError.h"

namespace zu::test {
namespace {

class FieldListTest : public ServiceTest {
protected:
    static com::ComPtr<::DataFieldList> NewList() {
        com::ComPtr<::DataFieldList> list;
        EXPECT_EQ(Service()->NewFieldList(list.put()), S_OK);
        return list;
    }
};

TEST_F(FieldListTest, KeepsFieldsAndDirectionsInOrder) {
    const auto list = NewList();
    EXPECT_EQ(list->Add(Text(L"NAME"), VARIANT_FALSE), S_OK);
    EXPECT_EQ(list->Add(Number(3), VARIANT_TRUE), S_OK);
    LONG count = 0;
    list->Count(&count);
    EXPECT_EQ(count, 2);
    com::Variant field;
    list->Item(0, field.put());
    EXPECT_EQ(field.ToText().view(), L"NAME");
    list->Item(1, field.put());
    EXPECT_EQ(field.type(), VT_I4);
    VARIANT_BOOL descending = VARIANT_FALSE;
    list->Descending(1, &descending);
    EXPECT_EQ(descending, VARIANT_TRUE);
    list->Descending(0, &descending);
    EXPECT_EQ(descending, VARIANT_FALSE);
}

TEST_F(FieldListTest, RefusesEntriesThatDoNotExist) {
    const auto list = NewList();
    com::Variant field;
    EXPECT_EQ(list->Item(0, field.put()), com::kSubscriptOutOfRange);
    EXPECT_EQ(list->Item(-1, field.put()), com::kSubscriptOutOfRange);
    VARIANT_BOOL descending = VARIANT_FALSE;
    EXPECT_EQ(list->Descending(0, &descending), com::kSubscriptOutOfRange);
}

TEST_F(FieldListTest, RefusesToAddNothing) {
    const auto list = NewList();
    EXPECT_EQ(list->Add(com::Variant(), VARIANT_FALSE), com::kTypeMismatch);
    EXPECT_EQ(list->Add(com::Variant::Null(), VARIANT_FALSE), com::kTypeMismatch);
    EXPECT_EQ(list->Add(com::Variant::Missing(), VARIANT_FALSE), com::kTypeMismatch);
}

TEST_F(FieldListTest, IsEmptyAfterClear) {
    const auto list = NewList();
    list->Add(Text(L"NAME"), VARIANT_FALSE);
    EXPECT_EQ(list->Clear(), S_OK);
    LONG count = -1;
    list->Count(&count);
    EXPECT_EQ(count, 0);
}

TEST_F(FieldListTest, ScriptsMayLeaveTheDirectionOutAndEnumerate) {
    const auto made = NewList();
    const LateBound list(made.get());
    list.Get(L"Add", {Text(L"NAME")});
    EXPECT_EQ(list.result(), S_OK);
    EXPECT_FALSE(list.Get(L"Descending", {Number(0)}).ToBoolean());
    EXPECT_EQ(list.Default({Number(0)}).ToText().view(), L"NAME");
    com::ComPtr<IUnknown> enumerator;
    ASSERT_EQ(made->get__NewEnum(enumerator.put()), S_OK);
    com::Variant element;
    EXPECT_EQ(enumerator.as<IEnumVARIANT>()->Next(1, element.put(), nullptr), S_OK);
    EXPECT_EQ(element.ToText().view(), L"NAME");
}

}  // namespace
}  // namespace zu::test
