// What a screen reader hears.
#include <oleacc.h>

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "tests/windows/WindowTest.h"

namespace zu::windows {
namespace {

class GridAccessibility : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    }
    void TearDown() override {
        CoUninitialize();
        WindowTest::TearDown();
    }
    static com::ComPtr<IAccessible> Object(HWND window) {
        com::ComPtr<IAccessible> object;
        AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                   object.putVoid());
        return object;
    }
    static VARIANT Child(LONG number) {
        VARIANT child{};
        child.vt = VT_I4;
        child.lVal = number;
        return child;
    }
};

TEST_F(GridAccessibility, ACellHasItsHeadingItsTextAndItsRecord) {
    Edit(FivePeople());
    form_->Press(VK_DOWN);
    form_->Press(VK_RIGHT);
    ASSERT_TRUE(form_->WaitForCell(3, 2));
    const auto grid = Object(form_->gridWindow());
    ASSERT_TRUE(grid);
    VARIANT focus{};
    ASSERT_EQ(grid->get_accFocus(&focus), S_OK);
    ASSERT_EQ(focus.vt, VT_I4);
    EXPECT_EQ(focus.lVal, 6);
    com::Bstr text;
    EXPECT_EQ(grid->get_accName(focus, text.put()), S_OK);
    EXPECT_EQ(text.view(), L"AGE");
    EXPECT_EQ(grid->get_accValue(focus, text.put()), S_OK);
    EXPECT_EQ(text.view(), L"45.0");
    EXPECT_EQ(grid->get_accDescription(focus, text.put()), S_OK);
    EXPECT_EQ(text.view(), L"Record 2 of 5");
    EXPECT_EQ(grid->get_accDescription(Child(13), text.put()), S_OK);
    EXPECT_EQ(text.view(), L"Record 4 of 5, deleted");
    VARIANT role{};
    EXPECT_EQ(grid->get_accRole(focus, &role), S_OK);
    EXPECT_EQ(role.lVal, ROLE_SYSTEM_CELL);
    EXPECT_EQ(grid->get_accRole(Child(CHILDID_SELF), &role), S_OK);
    EXPECT_EQ(role.lVal, ROLE_SYSTEM_TABLE);
    LONG count = 0;
    EXPECT_EQ(grid->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 20);
}

}  // namespace
}  // namespace zu::windows
