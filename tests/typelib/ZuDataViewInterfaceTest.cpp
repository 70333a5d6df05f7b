#include "tests/typelib/LibraryTest.h"

namespace zu::typelib {
namespace {

class ViewLibrary : public ::testing::Test {
protected:
    LibraryReader library = OpenLibrary(L"Zuengine.dll", 2);
};

TEST_F(ViewLibrary, HasItsIdentity) {
    EXPECT_EQ(library.Identity(), "ZuDataViewInterface {30D5F02A-F05A-43A6-81BD-9F322DA2E7C7} 1.0");
}

TEST_F(ViewLibrary, HoldsTheViewInterfacesAndNoClass) {
    EXPECT_EQ(library.Types(),
              (Lines{"interface ZuDataField", "interface ZuDataFields", "interface ZuDataView"}));
    EXPECT_EQ(library.Interface(L"ZuDataView"),
              "{29520DD4-3260-11D4-82C0-00C015021AB7} dual oleautomation: IDispatch");
    EXPECT_EQ(library.Interface(L"ZuDataFields"),
              "{29520DD3-3260-11D4-82C0-00C015021AB7} dual oleautomation: IDispatch");
    EXPECT_EQ(library.Interface(L"ZuDataField"),
              "{29520DD2-3260-11D4-82C0-00C015021AB7} dual oleautomation: IDispatch");
}

TEST_F(ViewLibrary, ViewsKeepTheirOperations) {
    ExpectOperations(library, L"ZuDataView",
                     {"1 Item get 0 (Index: VARIANT) -> ZuDataField",
                      "2 Update method 1 () -> Boolean",
                      "3 Fields get 2 () -> ZuDataFields",
                      "4 Updateable get 3 () -> Boolean",
                      "5 TableName get 4 () -> BSTR",
                      "6 RecordCount get 5 (optional Reserved: Long = 0) -> Long",
                      "7 MoveFirst method 6 (optional Reserved: Long = 0)",
                      "8 MoveLast method 7 (optional Reserved: Long = 0)",
                      "9 MoveNext method 8 (optional Count: Long = -1)",
                      "10 MovePrevious method 9 (optional Count: Long = -1)",
                      "11 Bof get 10 (optional Reserved: Long = 0) -> Boolean",
                      "12 Eof get 11 (optional Reserved: Long = 0) -> Boolean",
                      "13 AbsolutePosition get 12 (optional Reserved: Long = 0) -> Long",
                      "14 RecordNumber get 13 () -> Long",
                      "15 IsDirty get 14 () -> Boolean",
                      "16 IsNew get 15 () -> Boolean",
                      "17 IsDeleted get 16 () -> Boolean",
                      "18 CancelUpdate method 17 ()",
                      "19 Undelete method 18 (Index: Long) -> Boolean",
                      "20 Delete method 19 (Index: Long) -> Boolean",
                      "21 AddNew method 20 (optional inout Values: VARIANT*) -> Boolean",
                      "22 Refresh method 21 ()",
                      "23 CellValue get 22 (Index: Long, Column: Long) -> VARIANT",
                      "24 Clone method 23 () -> ZuDataView",
                      "25 Close method 24 ()",
                      "26 Move method 25 (Index: Long, optional Reserved: Long = 0)"});
}

TEST_F(ViewLibrary, FieldCollectionsKeepTheirOperations) {
    ExpectOperations(
        library, L"ZuDataFields",
        {"1 Item get 0 (Index: VARIANT) -> ZuDataField", "2 Count get 1 () -> Long",
         "3 _NewEnum get -4 () -> IUnknown restricted hidden", "4 Exists method 2 (Name: BSTR) -> Boolean"});
}

TEST_F(ViewLibrary, FieldsKeepTheirOperations) {
    ExpectOperations(
        library, L"ZuDataField",
        {"1 Name get 1 () -> BSTR", "2 Value get 0 () -> VARIANT", "3 Value put 0 (value: VARIANT)",
         "4 Index get 2 () -> Long", "5 Type get 3 () -> Long", "6 TypeName get 4 () -> BSTR",
         "7 DisplayWidth get 5 () -> Long", "8 ReadOnly get 6 () -> Boolean", "9 Decimals get 7 () -> Long",
         "10 Nullable get 8 () -> Boolean", "11 IsNull get 9 () -> Boolean",
         "12 OriginalValue get 10 () -> VARIANT", "13 Text get 11 () -> BSTR", "14 Size get 12 () -> Long",
         "15 Alignment get 13 () -> Long"});
}

TEST_F(ViewLibrary, EveryOperationExplainsItself) {
    for (const wchar_t* name : {L"ZuDataView", L"ZuDataField"}) {
        const auto texts = library.HelpStrings(name);
        for (const std::string& line : library.Operations(name)) {
            const std::size_t start = line.find(' ') + 1;
            EXPECT_TRUE(texts.contains(line.substr(start, line.find(' ', start) - start))) << line;
        }
    }
}

}  // namespace
}  // namespace zu::typelib
