#include "tests/typelib/LibraryTest.h"

namespace zu::typelib {
namespace {

class ParserLibrary : public ::testing::Test {
protected:
    LibraryReader library = OpenLibrary(L"Zuengine.dll", 3);
};

TEST_F(ParserLibrary, HasItsIdentity) {
    EXPECT_EQ(library.Identity(), "ZuParser {9863C9B9-304A-45DD-8783-1737866971E6} 1.0");
    EXPECT_EQ(library.Types(),
              (Lines{"coclass Parser", "dispinterface _ZuParserEvents", "interface ZuParser"}));
}

TEST_F(ParserLibrary, TheClassHasItsInterfaceAndItsEvents) {
    EXPECT_EQ(library.Class(L"Parser"),
              "{A7A62316-E624-4E41-BD00-4F06858DFE17}: default ZuParser, default source _ZuParserEvents");
}

TEST_F(ParserLibrary, ExpressionsKeepTheirOperations) {
    EXPECT_EQ(library.Interface(L"ZuParser"),
              "{27009F89-9965-11D4-835B-00C015021AB7} dual oleautomation: IDispatch");
    ExpectOperations(
        library, L"ZuParser",
        {"1 Formula put 1 (value: BSTR)", "2 Evaluate method 2 () -> VARIANT", "3 Formula get 1 () -> BSTR"});
}

TEST_F(ParserLibrary, EventsKeepTheirArguments) {
    EXPECT_EQ(library.Events(L"_ZuParserEvents"),
              (Lines{"ProvideValue method 1 (Name: BSTR, inout Value: VARIANT*)",
                     "SyntaxError method 2 (inout Number: Long*, inout Text: BSTR*)"}));
}

}  // namespace
}  // namespace zu::typelib
