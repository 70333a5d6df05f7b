#include "host/engine/ContextItems.h"

#include <gtest/gtest.h>

#include <memory>

#include "LateBound.h"
#include "ScriptObject.h"
#include "com/ComError.h"
#include "host/service/DataView.h"
#include "host/service/VariableRecords.h"

namespace zu::host {
namespace {

com::ComPtr<DataView> EmptyView() {
    return MakeView(std::make_shared<VariableRecords>(L"T", ViewFields(), 0));
}

TEST(ContextItems, HandlesAreNotTheNumbersOfItems) {
    ContextItems items;
    const LONG handle = ContextItems::HandleOf(2);
    EXPECT_NE(handle, 2);
    EXPECT_EQ(ContextItems::HandleOf(2), handle);
    EXPECT_NE(ContextItems::HandleOf(6), handle);
    EXPECT_THROW(items.Get(2), com::ComError);
}

TEST(ContextItems, ItemsOutOfRangeAreRefused) {
    for (const LONG item : {0L, -1L, 256L})
        EXPECT_THROW(ContextItems::HandleOf(item), com::ComError) << item;
    ContextItems items;
    EXPECT_THROW(items.Set(ContextItems::HandleOf(255) + 1, com::Variant()), com::ComError);
}

TEST(ContextItems, StartWithNoViewAndRecordZero) {
    const ContextItems items;
    const com::Variant view = items.Get(ContextItems::HandleOf(6));
    EXPECT_EQ(view.type(), VT_DISPATCH);
    EXPECT_EQ(view->pdispVal, nullptr);
    EXPECT_EQ(items.Get(ContextItems::HandleOf(2)).ToLong(), 0);
    EXPECT_EQ(items.Get(ContextItems::HandleOf(9)).type(), VT_EMPTY);
    EXPECT_FALSE(items.Has(6));
}

TEST(ContextItems, KeepWhatIsSetUntilItIsTakenAway) {
    ContextItems items;
    const LONG handle = ContextItems::HandleOf(2);
    items.Set(handle, com::Variant(LONG{7}));
    EXPECT_EQ(items.Get(handle).ToLong(), 7);
    EXPECT_EQ(items.count(), 1);
    items.Set(handle, com::Variant());
    EXPECT_FALSE(items.Has(2));
    EXPECT_EQ(items.Get(handle).ToLong(), 0);
}

TEST(ContextItems, TheViewItemTakesViewsOnly) {
    ContextItems items;
    const LONG handle = ContextItems::HandleOf(6);
    const com::ComPtr<test::ScriptObject> other = test::ScriptObject::Make();
    EXPECT_THROW(items.Set(handle, com::Variant(other.get())), com::ComError);
    EXPECT_THROW(items.Set(handle, com::Variant(LONG{1})), com::ComError);
    const com::ComPtr<DataView> view = EmptyView();
    items.Set(handle, com::Variant(view.get()));
    EXPECT_EQ(com::ObjectOf<ZuDataView>(items.Get(handle)).get(), view.get());
}

TEST(ContextItems, LetAViewGoWhenNothingIsPutInItsPlace) {
    ContextItems items;
    const LONG handle = ContextItems::HandleOf(6);
    const com::ComPtr<DataView> view = EmptyView();
    const auto references = [&] {
        view->AddRef();
        return view->Release();
    };
    const ULONG before = references();
    items.Set(handle, com::Variant(view.get()));
    EXPECT_GT(references(), before);
    items.Set(handle, com::Variant(static_cast<IDispatch*>(nullptr)));
    EXPECT_EQ(references(), before);
    items.Set(handle, com::Variant(view.get()));
    items.Clear();
    EXPECT_EQ(references(), before);
}

TEST(ContextItems, CopyWhatTheyAreGivenByReference) {
    ContextItems items;
    com::Variant original(LONG{3});
    VARIANT reference;
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = original.address();
    const LONG handle = ContextItems::HandleOf(2);
    items.Set(handle, reference);
    original = com::Variant(LONG{4});
    EXPECT_EQ(items.Get(handle).ToLong(), 3);
}

}  // namespace
}  // namespace zu::host
