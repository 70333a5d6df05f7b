#include <set>

#include "tests/typelib/LibraryTest.h"

namespace zu::typelib {
namespace {

class EngineLibrary : public ::testing::Test {
protected:
    LibraryReader library = OpenLibrary(L"Zuengine.dll", 1);
};

TEST_F(EngineLibrary, HasItsIdentity) {
    EXPECT_EQ(library.Identity(), "Zuengine {7DCA546A-2E03-4D2B-B3F2-46B3B4165661} 1.0");
}

TEST_F(EngineLibrary, HoldsItsTypes) {
    // Names in a type library do not distinguish case: the class Zuproject shares the spelling of its
    // interface.
    EXPECT_EQ(
        library.Types(),
        (Lines{"coclass Project", "interface DataFieldList", "interface DataIndex", "interface DataKeyField",
               "interface DataKeyFields", "interface DataTable", "interface ZuDatabaseService",
               "interface ZuEngineContext", "interface ZuEngineCore", "interface ZuEngineData",
               "interface ZuEngineMessages", "interface ZuEngineUserInterface", "interface ZuProject",
               "interface ZuRecordVariable"}));
    EXPECT_EQ(library.Class(L"Project"), "{F2A387A2-2770-4A6B-8610-1DD4C0C9DC86}: default ZuProject");
}

TEST_F(EngineLibrary, InterfacesHaveTheirIdentifiers) {
    const std::pair<const wchar_t*, const char*> identifiers[] = {
        {L"ZuRecordVariable", "{84D88A13-DE97-49CF-B75E-51371AB58250}"},
        {L"ZuProject", "{94FFBCF6-8A89-11D4-833E-00C015021AB7}"},
        {L"ZuEngineCore", "{94FFBCF3-8A89-11D4-833E-00C015021AB7}"},
        {L"ZuEngineContext", "{94FFBCF2-8A89-11D4-833E-00C015021AB7}"},
        {L"ZuEngineData", "{94FFBCF5-8A89-11D4-833E-00C015021AB7}"},
        {L"ZuEngineMessages", "{94FFBCF4-8A89-11D4-833E-00C015021AB7}"},
        {L"ZuEngineUserInterface", "{94FFBCF8-8A89-11D4-833E-00C015021AB7}"},
        {L"ZuDatabaseService", "{C82A2472-5D9B-11D4-830C-00C015021AB7}"},
        {L"DataTable", "{E2233990-0D8A-43E9-B995-E03393A4A8A1}"},
        {L"DataIndex", "{7129BE0E-DABF-458C-8F31-00F0912F3E76}"},
        {L"DataKeyFields", "{8CFAE7A7-6D94-45ED-9BD8-A87B71A06643}"},
        {L"DataKeyField", "{9638C1C2-128E-4EB2-A64C-4C787D82F96E}"},
        {L"DataFieldList", "{519E2DDE-C7C5-4B48-B0EE-5930FE28B3CB}"},
    };
    for (const auto& [name, identifier] : identifiers) {
        EXPECT_EQ(library.Interface(name), std::string(identifier) + " dual oleautomation: IDispatch");
    }
}

TEST_F(EngineLibrary, TheProjectKeepsItsOperations) {
    ExpectOperations(
        library, L"ZuProject",
        {"1 Engine method 1 () -> IDispatch", "2 Version get 2 () -> BSTR", "3 SettingsFile get 3 () -> BSTR",
         "4 Setting get 4 (Name: BSTR) -> BSTR", "5 Setting put 4 (Name: BSTR, value: BSTR)",
         "6 DataFolder get 5 () -> BSTR", "7 DataFolder put 5 (value: BSTR)",
         "8 RoutineHolder get 6 () -> IDispatch", "9 RoutineHolder putref 6 (value: IDispatch)",
         "10 Listener get 7 () -> IDispatch", "11 Listener putref 7 (value: IDispatch)",
         "12 LastError get 8 () -> BSTR", "13 LastErrorCode get 9 () -> Long",
         "14 ClearLastError method 10 ()", "15 LogFile get 11 () -> BSTR", "16 Tracing get 12 () -> Boolean",
         "17 Tracing put 12 (value: Boolean)", "18 DatabaseService method 13 () -> IDispatch"});
}

TEST_F(EngineLibrary, TheCoreKeepsItsOperations) {
    ExpectOperations(
        library, L"ZuEngineCore",
        {"1 Name get 101 () -> BSTR", "2 Version get 102 () -> BSTR", "3 SettingsFile get 103 () -> BSTR",
         "4 Setting get 104 (Name: BSTR) -> BSTR", "5 Setting put 104 (Name: BSTR, value: BSTR)"});
}

TEST_F(EngineLibrary, TheContextKeepsItsOperations) {
    ExpectOperations(
        library, L"ZuEngineContext",
        {"1 RoutineHolder get 201 () -> IDispatch", "2 RoutineHolder putref 201 (value: IDispatch)",
         "3 HasRoutine method 202 (Name: BSTR) -> Boolean", "4 ClearRoutines method 203 ()",
         "5 SetContextItem method 204 (Handle: Long, Value: VARIANT)",
         "6 SaveContextItem method 205 (Handle: Long, out Value: VARIANT*)",
         "7 CurrentView get 206 () -> IDispatch", "8 CurrentRecord get 207 () -> Long",
         "9 ContextItemCount get 208 () -> Long", "10 ContextItemHandle method 209 (Item: Long) -> Long",
         "11 HasContextItem method 210 (Item: Long) -> Boolean",
         "12 ClearContextItem method 211 (Handle: Long)",
         "13 ContextItem method 212 (Handle: Long) -> VARIANT", "14 ClearContextItems method 213 ()",
         "15 Routine method 214 (Name: BSTR) -> IDispatch",
         "16 CallRoutine method 215 (Routine: IDispatch, Name: BSTR, Arguments: "
         "SAFEARRAY(VARIANT)*) -> Boolean"});
}

TEST_F(EngineLibrary, TheDataKeepsItsOperations) {
    ExpectOperations(
        library, L"ZuEngineData",
        {"1 ToBoolean method 301 (Value: VARIANT) -> Boolean", "2 ToText method 302 (Value: VARIANT) -> BSTR",
         "3 ToLong method 303 (Value: VARIANT) -> Long", "4 ToDouble method 304 (Value: VARIANT) -> Double",
         "5 ToDate method 305 (Value: VARIANT) -> Date",
         "6 ToCurrency method 306 (Value: VARIANT) -> Currency",
         "7 IsBlank method 307 (Value: VARIANT) -> Boolean", "8 NewRecordVariable method 308 () -> IDispatch",
         "9 DecimalPlaces method 309 (TypeCode: Long) -> Long", "10 DataFolder get 310 () -> BSTR",
         "11 DataFolder put 310 (value: BSTR)", "12 DefaultTechnology method 311 () -> BSTR",
         "13 RecordAdded method 312 (Values: IDispatch)", "14 DatabaseService method 313 () -> IDispatch"});
}

TEST_F(EngineLibrary, TheMessagesKeepTheirOperations) {
    ExpectOperations(library, L"ZuEngineMessages",
                     {"1 Trace method 401 (Text: BSTR)", "2 ClearLastError method 402 ()",
                      "3 RaiseError method 403 (Code: Long, Arguments: SAFEARRAY(VARIANT)*)",
                      "4 MessageText method 404 (Code: Long, Arguments: SAFEARRAY(VARIANT)*) -> BSTR",
                      "5 LastError get 405 () -> BSTR", "6 LastErrorCode get 406 () -> Long",
                      "7 LogFile get 407 () -> BSTR", "8 Tracing get 408 () -> Boolean",
                      "9 Tracing put 408 (value: Boolean)", "10 Listener get 409 () -> IDispatch",
                      "11 Listener putref 409 (value: IDispatch)"});
}

TEST_F(EngineLibrary, TheUserInterfaceKeepsItsOperations) {
    ExpectOperations(library, L"ZuEngineUserInterface",
                     {"1 OwnerWindow method 501 () -> Long", "2 SetOwnerWindow method 502 (Window: Long)",
                      "3 Interactive get 503 () -> Boolean", "4 Interactive put 503 (value: Boolean)"});
}

TEST_F(EngineLibrary, DispatchIdsDoNotRepeatWithinTheEngine) {
    // One object serves all of them by name.
    std::set<std::string> ids;
    for (const wchar_t* name : {L"ZuProject", L"ZuEngineCore", L"ZuEngineContext", L"ZuEngineData",
                                L"ZuEngineMessages", L"ZuEngineUserInterface"}) {
        std::set<std::string> own;
        for (const std::string& line : library.Operations(name)) {
            const std::string upToId = line.substr(0, line.find(" ("));
            own.insert(upToId.substr(upToId.find_last_of(' ') + 1));
        }
        for (const std::string& id : own)
            EXPECT_TRUE(ids.insert(id).second) << id;
    }
}

TEST_F(EngineLibrary, RecordVariablesKeepTheirOperations) {
    ExpectOperations(
        library, L"ZuRecordVariable",
        {"1 Initialised get 601 () -> Boolean", "2 Layout get 602 () -> IDispatch",
         "3 Records get 603 () -> Long", "4 FieldValue get 604 (Index: VARIANT) -> VARIANT",
         "5 FieldValue put 604 (Index: VARIANT, value: VARIANT)",
         "6 Assign method 605 (Values: IDispatch) -> Boolean",
         "7 Initialise method 606 (Layout: IDispatch, Records: Long) -> Boolean", "8 Reset method 607 ()"});
}

TEST_F(EngineLibrary, TheDatabaseServiceKeepsItsOperations) {
    ExpectOperations(
        library, L"ZuDatabaseService",
        {"1 Technologies method 1 () -> VARIANT", "2 TableNames method 2 (Database: BSTR) -> VARIANT",
         "3 TableExists method 3 (Database: BSTR, Table: BSTR) -> Boolean", "4 CloseTables method 4 ()",
         "5 OpenTable method 5 (inout Database: BSTR*, inout Table: BSTR*) -> IDispatch",
         "6 Descend method 6 (Value: VARIANT, Technology: BSTR) -> VARIANT",
         "7 Pack method 7 (Database: BSTR, Table: BSTR) -> Boolean",
         "8 Undelete method 8 (Database: BSTR, Table: BSTR, Condition: BSTR) -> Boolean",
         "9 CreateTable method 9 (inout Database: BSTR*, inout Table: BSTR*, Layout: IDispatch, Index: "
         "DataFieldList) -> Boolean",
         "10 DropTable method 10 (inout Database: BSTR*, inout Table: BSTR*) -> Boolean",
         "11 NewFieldList method 11 () -> DataFieldList",
         "12 CreateIndex method 12 (Database: BSTR, Table: BSTR, Fields: DataFieldList) -> Boolean",
         "13 DropIndex method 13 (Database: BSTR, Table: BSTR, Name: BSTR) -> Boolean",
         "14 Reindex method 14 (Database: BSTR, Table: BSTR) -> Boolean",
         "15 Zap method 15 (Database: BSTR, Table: BSTR) -> Boolean",
         "16 Check method 16 (Database: BSTR, Table: BSTR) -> VARIANT",
         "17 Repair method 17 (Database: BSTR, Table: BSTR) -> Boolean"});
}

TEST_F(EngineLibrary, TablesKeepTheirOperations) {
    ExpectOperations(
        library, L"DataTable",
        {"1 Name get 1 () -> BSTR", "2 Layout method 2 () -> IDispatch",
         "3 OpenIndex method 3 (inout Name: BSTR*) -> Boolean",
         "4 CurrentIndex method 4 (optional Reserved: Long = 0) -> DataIndex",
         "5 Seek method 5 (Index: DataIndex, optional Reserved: Long = 0, MaxRecords: Long, Flag: Long, "
         "FieldNames: VARIANT) -> IDispatch",
         "6 RecordCount get 6 () -> Long", "7 IndexNames method 7 () -> VARIANT",
         "8 Select method 8 (Condition: VARIANT, MaxRecords: VARIANT, Flag: Long, FieldNames: VARIANT) -> "
         "IDispatch",
         "9 Index method 9 (Index: VARIANT) -> DataIndex", "10 Updateable get 10 () -> Boolean",
         "11 Warnings method 11 () -> VARIANT", "12 Facts method 12 () -> VARIANT"});
}

TEST_F(EngineLibrary, IndexesAndKeysKeepTheirOperations) {
    ExpectOperations(library, L"DataIndex",
                     {"1 Name get 1 () -> BSTR", "2 Expression get 2 () -> BSTR", "3 Filter get 3 () -> BSTR",
                      "4 Unique get 4 () -> Boolean", "5 Descending get 5 () -> Boolean",
                      "6 KeyFields method 6 () -> DataKeyFields", "7 Usable get 7 () -> Boolean",
                      "8 Reason get 8 () -> BSTR", "9 Candidate get 9 () -> Boolean"});
    ExpectOperations(library, L"DataKeyFields",
                     {"1 Item method 0 (Index: VARIANT) -> DataKeyField", "2 Count method 1 () -> Long",
                      "3 _NewEnum get -4 () -> IUnknown restricted hidden"});
    ExpectOperations(
        library, L"DataKeyField",
        {"1 Name get 1 () -> BSTR", "2 Value put 0 (value: VARIANT)", "3 Value get 0 () -> VARIANT",
         "4 Type get 2 () -> Long", "5 Descending get 3 () -> Boolean", "6 Exact get 4 () -> Boolean",
         "7 Exact put 4 (value: Boolean)"});
    ExpectOperations(library, L"DataFieldList",
                     {"1 Add method 1 (Field: VARIANT, optional Descending: Boolean = False)",
                      "2 Count method 2 () -> Long", "3 Item method 0 (Index: Long) -> VARIANT",
                      "4 Descending method 3 (Index: Long) -> Boolean",
                      "5 _NewEnum get -4 () -> IUnknown restricted hidden", "6 Clear method 4 ()"});
}

}  // namespace
}  // namespace zu::typelib
