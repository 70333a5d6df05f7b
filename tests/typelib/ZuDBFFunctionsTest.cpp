#include "tests/typelib/LibraryTest.h"

namespace zu::typelib {
namespace {

class FunctionsLibrary : public ::testing::Test {
protected:
    // Held open, so that the references to views find their library also where nothing is registered.
    LibraryReader views = OpenLibrary(L"Zuengine.dll", 2);
    LibraryReader library = OpenLibrary(L"ZuDBFFunctions.dll", 1);
};

/// ", optional inout Argument0: VARIANT*" and so on to 9.
std::string RoutineArguments() {
    std::string text;
    for (int number = 0; number < 10; ++number) {
        text += ", optional inout Argument" + std::to_string(number) + ": VARIANT*";
    }
    return text;
}

const std::string kOutputs =
    "optional inout RowCount: VARIANT*, optional inout AddedCount: VARIANT*, optional inout "
    "FailedRowIndexes: "
    "VARIANT*";

TEST_F(FunctionsLibrary, HasItsIdentityAndHelpFile) {
    EXPECT_EQ(library.Identity(),
              "ZuDBFFunctions {E36F2C32-4325-4AF0-9976-A4633FC83E9B} 1.0 \"zuRefbk.chm\"");
}

TEST_F(FunctionsLibrary, HoldsItsTypes) {
    EXPECT_EQ(
        library.Types(),
        (Lines{"coclass Functions", "coclass ZuDbRef", "coclass ZuDbfControl", "coclass ZuExportFormat",
               "coclass ZuExportFormats", "coclass ZuImportFormat", "coclass ZuImportFormats",
               "enum DateMaskConstants", "enum PositionConstants", "interface _Functions",
               "interface _ZuDbRef", "interface _ZuDbfControl", "interface _ZuExportFormat",
               "interface _ZuExportFormats", "interface _ZuImportFormat", "interface _ZuImportFormats"}));
}

TEST_F(FunctionsLibrary, ClassesKeepTheirIdentifiers) {
    EXPECT_EQ(library.Class(L"Functions"), "{FD0150D8-E920-43CF-94BB-1E9A622F397A}: default _Functions");
    EXPECT_EQ(library.Class(L"ZuDbRef"), "{F131DBEB-3E31-4951-BC11-1AFF6C111A84}: default _ZuDbRef");
    EXPECT_EQ(library.Class(L"ZuDbfControl"),
              "{17A936C7-AC93-4E5C-8C8D-0CB273C2A354}: default _ZuDbfControl");
    EXPECT_EQ(library.Class(L"ZuImportFormats"),
              "{F3D0DF79-64A7-4E62-B676-3E9A8F3B5D36}: default _ZuImportFormats");
    EXPECT_EQ(library.Class(L"ZuImportFormat"),
              "{A1BC62E9-6E8C-4017-B6BE-BB61073728CE}: default _ZuImportFormat");
    EXPECT_EQ(library.Class(L"ZuExportFormats"),
              "{CB43C5D4-7910-4E37-ACA6-80E103204BDB}: default _ZuExportFormats");
    EXPECT_EQ(library.Class(L"ZuExportFormat"),
              "{8FE99ACC-D1B1-4824-9A70-DB4A3F312480}: default _ZuExportFormat");
}

TEST_F(FunctionsLibrary, EnumerationsKeepTheirValues) {
    EXPECT_EQ(
        library.Enumeration(L"DateMaskConstants"),
        (Lines{"DateMask_Custom = -1", "DateMask_Ansi = 0", "DateMask_ddmmyyyy = 1", "DateMask_mmddyyyy = 2",
               "DateMask_yyyymmdd = 3", "DateMask_ddmmmyyyy = 4", "DateMask_yyyymmmdd = 5",
               "DateMask_ddmmmmyyyy = 6", "DateMask_yyyymmmmdd = 7", "_DateMask_Last = 8"}));
    EXPECT_EQ(library.Enumeration(L"PositionConstants"),
              (Lines{"SymbolToleft = 0", "SymbolToRight = 1", "UseParentheses = 2"}));
}

TEST_F(FunctionsLibrary, FunctionsKeepTheirParameters) {
    const std::string fromDbf =
        " (DestTableDefn: VARIANT, SourceTableDefn: VARIANT, optional Condition: BSTR, optional "
        "SourceFieldNames: VARIANT, optional MaxRecords: Long = 0, optional DestFieldNames: VARIANT, " +
        kOutputs + ") -> Boolean";
    const std::string exporting =
        "optional FieldNames: VARIANT, optional MaxRecords: Long = 0, optional inout ExportDefinition: "
        "_ZuDbfControl*";
    const std::string importing =
        " (DestTableDefn: VARIANT, SourceFilename: BSTR, optional Condition: BSTR, optional FieldNames: "
        "VARIANT, "
        "optional inout ImportDefinition: _ZuDbfControl*, " +
        kOutputs + ") -> Boolean";
    const std::string window =
        "optional Height: Long = 400, optional Width: VARIANT = 600, optional Top: Long = -1, optional Left: "
        "Long "
        "= -1, optional inout FieldNames: VARIANT*, ";
    ExpectOperations(
        library, L"_Functions",
        {"1 DbfOpen method 0x60030000 (TableDefn: VARIANT) -> _ZuDbRef",
         "2 DbfSelect method 0x60030001 (TableDefn: VARIANT, optional Condition: BSTR, optional inout "
         "FieldNames: "
         "VARIANT*, optional MaxRecords: Long = 0) -> ZuDataView",
         "3 DbfLookup method 0x60030002 (TableDefn: VARIANT, optional inout IndexKeyValue: VARIANT*, "
         "optional Exact: "
         "VARIANT = 1, optional inout FieldNames: VARIANT*, optional MaxRecords: Long = 1) -> ZuDataView",
         "4 DbfCount method 0x60030003 (TableDefn: VARIANT, optional Condition: BSTR) -> Long",
         "5 DbfTop method 0x60030004 (optional inout DataView: VARIANT*) -> Boolean",
         "6 DbfBottom method 0x60030005 (optional inout DataView: VARIANT*) -> Boolean",
         "7 DbfRecNo method 0x60030006 (optional inout DataView: VARIANT*) -> Long",
         "8 DbfFieldValue method 0x60030007 (inout Field: ZuDataField*) -> VARIANT",
         "9 Descend method 0x60030008 (inout Value: VARIANT*, optional inout Technology: BSTR*) -> VARIANT",
         "10 DbfVarDeclare method 0x60030009 (TableDefn: VARIANT) -> ZuDataView",
         "11 DbfVarReset method 0x6003000a (inout DataView: ZuDataView*) -> VARIANT",
         "12 DbfProcess method 0x6003000b (TableDefn: VARIANT, RoutineName: BSTR, optional Condition: BSTR, "
         "optional "
         "inout FieldNames: VARIANT*, optional MaxRecords: Long = 0" +
             RoutineArguments() + ") -> Long",
         "13 DbfReplace method 0x6003000c (inout params: SAFEARRAY(VARIANT)*) -> VARIANT",
         "14 DbfAddNew method 0x6003000d (TableDefn: VARIANT, inout FieldValues: ZuDataView*) -> Boolean",
         "15 DbfConditionalAddNew method 0x6003000e (TableDefn: VARIANT, inout FieldValues: ZuDataView*, "
         "inout "
         "IndexKeyValue: VARIANT*) -> Boolean",
         "16 DbfUpdate method 0x6003000f (TableDefn: VARIANT, inout IndexKeyValue: VARIANT*, inout "
         "UpdateInfo: "
         "SAFEARRAY(VARIANT)*) -> Boolean",
         "17 DbfModify method 0x60030010 (DestTableDefn: VARIANT, SourceTableDefn: VARIANT) -> Boolean",
         "18 DbfDelete method 0x60030011 (TableDefn: VARIANT, inout IndexKeyValue: VARIANT*, optional Exact: "
         "Boolean "
         "= True, optional MaxRecords: Long = 1) -> Long",
         "19 DbfUndelete method 0x60030012 (TableDefn: VARIANT, optional inout Condition: BSTR*) -> Boolean",
         "20 DbfCleanup method 0x60030013 (TableDefn: VARIANT) -> Boolean",
         "21 DbfFromDbf method 0x60030014" + fromDbf,
         "22 DbfToDbf method 0x60030015 (SourceTableDefn: VARIANT, DestTableDefn: VARIANT, optional "
         "Condition: BSTR, "
         "optional SourceFieldNames: VARIANT, optional MaxRecords: Long = 0, " +
             kOutputs + ") -> Boolean",
         "23 DbfFromDbfCorresponding method 0x60030016" + fromDbf,
         "24 DbfIndex method 0x60030017 (TableDefn: VARIANT, inout IndexFields: SAFEARRAY(VARIANT)*) -> "
         "Boolean",
         "25 DbfToDel method 0x60030018 (SourceTableDefn: VARIANT, DestFilename: BSTR, optional Condition: "
         "VARIANT, " +
             exporting + ") -> Boolean",
         "26 DbfToFix method 0x60030019 (SourceTableDefn: VARIANT, DestFilename: BSTR, optional Condition: "
         "BSTR, " +
             exporting + ") -> Boolean",
         "27 DbfToFile method 0x6003001a (SourceTableDefn: VARIANT, DestFilename: BSTR, optional Condition: "
         "VARIANT, " +
             exporting + ", optional inout FormatName: BSTR*) -> Boolean",
         "28 DbfFromDel method 0x6003001b" + importing,
         "29 DbfFromFix method 0x6003001c" + importing,
         "30 DbfFromFile method 0x6003001d (inout DestTableDefn: VARIANT*, inout SourceFilename: BSTR*, "
         "optional inout "
         "Condition: BSTR*, optional inout FieldNames: VARIANT*, optional inout ImportDefinition: "
         "_ZuDbfControl*, "
         "optional inout FormatName: BSTR*, " +
             kOutputs + ") -> Boolean",
         "31 DbfEdit method 0x6003001e (TableDefn: VARIANT, optional Title: BSTR, optional Condition: "
         "VARIANT, optional "
         "Direction: VARIANT, " +
             window + "optional AllowUndelete: Boolean = False) -> Boolean",
         "32 DbfPick method 0x6003001f (TableDefn: VARIANT, optional Title: BSTR, optional Condition: "
         "BSTR, " +
             window + "optional inout ReturnField: VARIANT*) -> VARIANT"});
}

TEST_F(FunctionsLibrary, FunctionsCarryTheirHelpTexts) {
    const std::map<std::string, std::string> expected = {
        {"DbfBottom", "Return TRUE if on the last logical record of a ZuDataview."},
        {"DbfCount",
         "Return number of records in a database table, optionally which meet a specified criteria."},
        {"DbfLookup", "Look up records in a database table."},
        {"DbfRecNo", "Return the current record number in an open database"},
        {"DbfTop", "Return TRUE if on the first logical record of a database file"},
        {"DbfFieldValue",
         "Returns the value of a ZuDataField replacing 'Null' value with appropriate default."},
        {"DbfProcess", "Process records in a database"},
        {"DbfReplace", "Update fields within a database record being processed by DbfProcess( )"},
        {"DbfAddNew", "Add new record to a table in a database"},
        {"DbfUpdate", "Update up to 4 fields within a record in a database"},
        {"DbfModify", "Add or update records in a destination database from a source database"},
        {"DbfDelete", "Delete or Flag for deletion a Database record."},
        {"DbfCleanup", "Physically remove records from a database table."},
        {"DbfFromDbf", "Append records from one database table to another"},
        {"DbfToDbf", "Copy records from one database to another"},
        {"DbfIndex", "Create or recreate an index for a database table."},
        {"DbfToDel", "Export records from a database to a delimited ASCII file"},
        {"DbfToFix", "Export records from a database to a fixed length ASCII file"},
        {"DbfFromDel", "Append records from a delimited ASCII file to a database table."},
        {"DbfFromFix", "Append records from a fixed length ASCII file to a database table."},
        {"DbfFromFile", "Append records from a ASCII file to a database table."},
        {"DbfEdit", "Display a dialog box to allow the records in a database table to be edited."},
        {"DbfPick", "Browse a database"},
    };
    EXPECT_EQ(library.HelpStrings(L"_Functions"), expected);
}

TEST_F(FunctionsLibrary, OpenTablesKeepTheirOperations) {
    ExpectOperations(
        library, L"_ZuDbRef",
        {"1 OpenIndex method 0x60030000 (optional inout Indexname: BSTR*) -> Boolean",
         "2 CloseTable method 0x60030001 ()",
         "3 Filter method 0x60030002 (Condition: VARIANT, optional MaxRecords: Long = 0, optional inout "
         "FieldNames: "
         "VARIANT*) -> ZuDataView",
         "4 Process method 0x60030003 (RoutineName: BSTR, optional Condition: BSTR, optional FieldNames: "
         "VARIANT, "
         "optional MaxRecords: Long = 0" +
             RoutineArguments() + ") -> Long",
         "5 Lookup method 0x60030004 (inout IndexKeyValue: VARIANT*, optional Exact: VARIANT = 1, optional "
         "MaxRecords: Long = 0, optional inout FieldNames: VARIANT*) -> ZuDataView"});
}

TEST_F(FunctionsLibrary, TheControlKeepsItsOperations) {
    ExpectOperations(library, L"_ZuDbfControl",
                     {"1 ImportFormats get 0x68030001 () -> _ZuImportFormats",
                      "2 ExportFormats get 0x68030000 () -> _ZuExportFormats"});
}

TEST_F(FunctionsLibrary, FormatCollectionsKeepTheirOperations) {
    for (const std::string kind : {"Import", "Export"}) {
        const std::wstring name = L"_Zu" + std::wstring(kind.begin(), kind.end()) + L"Formats";
        ExpectOperations(
            library, name.c_str(),
            {"1 Count get 0x68030000 () -> Long",
             "2 Item get 0 (ItemReference: VARIANT) -> _Zu" + kind + "Format",
             "3 NewEnum get -4 () -> IUnknown restricted hidden",
             "4 AddFormat method 0x60030002 (inout Name: BSTR*, optional inout DefaultSetup: Long* = 0) "
             "-> Boolean"});
    }
}

/// A property of a format as the table below states it.
struct Property {
    const char* name;
    const char* type;
    const char* id;
};

Lines PropertyLines(const std::vector<Property>& properties) {
    Lines lines;
    int position = 1;
    for (const Property& property : properties) {
        const std::string name = property.name;
        lines.push_back(std::to_string(position++) + " " + name + " get " + property.id + " () -> " +
                        property.type);
        if (name == "Name") continue;  // read-only
        lines.push_back(std::to_string(position++) + " " + name + " put " + property.id +
                        " (value: " + property.type + ")");
    }
    return lines;
}

TEST_F(FunctionsLibrary, ExportFormatsKeepTheirProperties) {
    ExpectOperations(library, L"_ZuExportFormat",
                     PropertyLines({{"Name", "BSTR", "0x6803001c"},
                                    {"DateFormat", "DateMaskConstants", "0x6803001b"},
                                    {"DateSeparator", "BSTR", "0x6803001a"},
                                    {"DateFormatMask", "BSTR", "0x68030019"},
                                    {"TrueValue", "BSTR", "0x68030018"},
                                    {"FalseValue", "BSTR", "0x68030017"},
                                    {"StringsTrimmed", "Boolean", "0x68030016"},
                                    {"StringsPadded", "Boolean", "0x68030015"},
                                    {"StringPadCharacter", "BSTR", "0x68030014"},
                                    {"StringsQuoted", "Boolean", "0x68030013"},
                                    {"NumbersTrimmed", "Boolean", "0x68030012"},
                                    {"NumbersPadded", "Boolean", "0x68030011"},
                                    {"NumberPadCharacter", "BSTR", "0x68030010"},
                                    {"NumbersQuoted", "Boolean", "0x6803000f"},
                                    {"NumberPositiveSymbol", "BSTR", "0x6803000e"},
                                    {"NumberNegativeSymbol", "BSTR", "0x6803000d"},
                                    {"NumberSignPosition", "PositionConstants", "0x6803000c"},
                                    {"CurrencySignPosition", "PositionConstants", "0x6803000b"},
                                    {"CurrencySymbol", "BSTR", "0x6803000a"},
                                    {"CurrencySymbolPosition", "PositionConstants", "0x68030009"},
                                    {"CurrencyPrecision", "Long", "0x68030008"},
                                    {"Separator", "BSTR", "0x68030007"},
                                    {"FieldQuoteChar", "BSTR", "0x68030006"},
                                    {"LengthOfSingle", "Long", "0x68030005"},
                                    {"LengthOfDouble", "Long", "0x68030004"},
                                    {"DecimalsForSingle", "Long", "0x68030003"},
                                    {"DecimalsForDouble", "Long", "0x68030002"},
                                    {"LengthOfCurrency", "Long", "0x68030001"},
                                    {"OmitDecimalPoint", "Boolean", "0x68030000"}}));
}

TEST_F(FunctionsLibrary, ImportFormatsKeepTheirProperties) {
    ExpectOperations(library, L"_ZuImportFormat",
                     PropertyLines({{"Name", "BSTR", "0x6803000a"},
                                    {"BooleanLength", "Long", "0x68030009"},
                                    {"DateFormat", "DateMaskConstants", "0x68030008"},
                                    {"DateSeparator", "BSTR", "0x68030007"},
                                    {"DateFormatMask", "BSTR", "0x68030006"},
                                    {"StringsTrimmed", "Boolean", "0x68030005"},
                                    {"FieldQuoteChar", "BSTR", "0x68030004"},
                                    {"LengthOfSingle", "Long", "0x68030002"},
                                    {"LengthOfDouble", "Long", "0x68030001"},
                                    {"LengthOfCurrency", "Long", "0x68030000"},
                                    {"Separator", "BSTR", "0x6803000b"}}));
}

}  // namespace
}  // namespace zu::typelib
