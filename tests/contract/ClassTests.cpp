// The classes that clients can create, and calls by name.
#include "tests/contract/Arrays.h"
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using fake::Journal;
using fake::Scene;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr HRESULT kInvalidFriendCall = static_cast<HRESULT>(0x800A0061);

/// A call by name with plain arguments, given in their order.
struct NamedCall {
    HRESULT result = E_FAIL;
    HRESULT inside = S_OK;
    Variant value;
};

NamedCall CallByName(IDispatch& object, const wchar_t* name, const std::vector<VARIANT>& arguments) {
    NamedCall call;
    std::wstring text(name);
    LPOLESTR names[] = {text.data()};
    DISPID id = DISPID_UNKNOWN;
    call.result = object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(call.result)) return call;
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    EXCEPINFO exception{};
    call.result = object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                &parameters, call.value.put(), &exception, nullptr);
    call.inside = exception.scode;
    for (BSTR part : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile}) {
        SysFreeString(part);
    }
    return call;
}

}  // namespace

class Classes : public ContractTest {};

TEST_F(Classes, AllSevenCanBeCreatedByNameAndDescribeThemselves) {
    for (const wchar_t* name : {L"Functions", L"ZuDbRef", L"ZuDbfControl", L"ZuImportFormats",
                                L"ZuImportFormat", L"ZuExportFormats", L"ZuExportFormat"}) {
        const auto object = Create((std::wstring(L"ZuDBFFunctions.") + name).c_str());
        ASSERT_TRUE(object);
        const auto dispatch = object.tryAs<IDispatch>();
        ASSERT_TRUE(dispatch);
        ComPtr<ITypeInfo> type;
        EXPECT_EQ(dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.put()), S_OK);
        Bstr interfaceName;
        ASSERT_TRUE(type);
        EXPECT_EQ(type->GetDocumentation(MEMBERID_NIL, interfaceName.put(), nullptr, nullptr, nullptr), S_OK);
        EXPECT_EQ(interfaceName.view(), std::wstring(L"_") + name);
        const auto provider = object.tryAs<IProvideClassInfo>();
        ASSERT_TRUE(provider);
        ComPtr<ITypeInfo> classType;
        EXPECT_EQ(provider->GetClassInfo(classType.put()), S_OK);
        Bstr className;
        EXPECT_EQ(classType->GetDocumentation(MEMBERID_NIL, className.put(), nullptr, nullptr, nullptr),
                  S_OK);
        EXPECT_EQ(className.view(), name);
    }
}

TEST_F(Classes, FunctionsAreCalledByNameWithOptionalArgumentsLeftOut) {
    const NamedCall count = CallByName(*functions_.get(), L"dbfcount", {Variant(L"X|d>t").get()});
    EXPECT_EQ(count.result, S_OK);
    EXPECT_EQ(count.value.type(), VT_I4);
    EXPECT_EQ(count.value.ToLong(), 3);
    EXPECT_EQ(TakeCalls(),
              OpenedThen({"DataTable.Select(\"\", I4 0, 0, I2 0)", "ZuDataView.RecordCount(0)"}));
}

TEST_F(Classes, LookupByNameWithTheKeyAloneIsExactAndTakesOneRecord) {
    Variant key(L"SMITH");
    const NamedCall found =
        CallByName(*functions_.get(), L"DbfLookup", {Variant(L"X|d>t").get(), ReferenceTo(key)});
    EXPECT_EQ(found.result, S_OK);
    EXPECT_TRUE(com::ObjectOf<ZuDataView>(found.value));
    const Calls calls = TakeCalls();
    EXPECT_THAT(calls, ::testing::Contains("ZuEngineData.ToBoolean(True)"));
    EXPECT_EQ(calls.back(), "DataTable.Seek(<index 1>, 0, 1, 0, missing)");
}

TEST_F(Classes, DescendByNameWithoutTechnologyTakesTheDefaultOne) {
    const NamedCall call = CallByName(*functions_.get(), L"Descend", {Variant(LONG{5}).get()});
    EXPECT_EQ(call.result, S_OK);
    EXPECT_EQ(TakeCalls().back(), "ZuDatabaseService.Descend(I4 5, \"T\")");
    const Variant missing = Variant::Missing();
    CallByName(*functions_.get(), L"Descend", {Variant(LONG{5}).get(), missing.get()});
    EXPECT_EQ(TakeCalls().back(), "ZuDatabaseService.Descend(I4 5, \"T\")");
    CallByName(*functions_.get(), L"Descend", {Variant(LONG{5}).get(), Variant(L"X").get()});
    EXPECT_EQ(TakeCalls().back(), "ZuDatabaseService.Descend(I4 5, \"X\")");
}

TEST_F(Classes, FieldsAndViewsArePassedByNameInAnyWrapping) {
    Scene().fields = {{L"F", VT_BSTR, Variant::Null()}};
    const ComPtr<ZuDataView> view = Select();
    ComPtr<ZuDataFields> fields;
    ComPtr<ZuDataField> field;
    view->get_Fields(fields.put());
    fields->get_Item(Variant(L"F"), field.put());
    Variant variable(field.get());
    IDispatch* object = field.get();
    VARIANT reference{};
    reference.vt = VT_DISPATCH | VT_BYREF;
    reference.ppdispVal = &object;
    for (const VARIANT& argument : {variable.get(), ReferenceTo(variable), reference}) {
        const NamedCall call = CallByName(*functions_.get(), L"DbfFieldValue", {argument});
        EXPECT_EQ(call.result, S_OK);
        EXPECT_EQ(call.value.type(), VT_BSTR) << argument.vt;
    }
    Variant viewVariable(view.get());
    const NamedCall top = CallByName(*functions_.get(), L"DbfTop", {ReferenceTo(viewVariable)});
    EXPECT_EQ(top.value.ToBoolean(), true);
    const NamedCall reset = CallByName(*functions_.get(), L"DbfVarReset", {viewVariable.get()});
    EXPECT_EQ(reset.result, S_OK);
    EXPECT_EQ(reset.value.type(), VT_EMPTY);
}

TEST_F(Classes, OpenTablesAreUsedByName) {
    const ComPtr<_ZuDbRef> table = Open();
    TakeCalls();
    EXPECT_EQ(CallByName(*table.get(), L"OpenIndex", {}).value.ToBoolean(), true);
    EXPECT_EQ(TakeCalls().back(), "DataTable.OpenIndex(\"\")");
    const NamedCall view = CallByName(*table.get(), L"Filter", {Variant(L"A>1").get()});
    EXPECT_TRUE(com::ObjectOf<ZuDataView>(view.value));
    EXPECT_EQ(TakeCalls().back(), "DataTable.Select(\"A>1\", I4 0, 0, missing)");
    Variant argument(L"a");
    const Variant missing = Variant::Missing();
    const NamedCall processed =
        CallByName(*table.get(), L"Process",
                   {Variant(L"Each").get(), missing.get(), missing.get(), missing.get(),
                    ReferenceTo(argument), missing.get(), Variant(L"lost").get()});
    EXPECT_EQ(processed.value.ToLong(), 3);
    const Calls calls = TakeCalls();
    EXPECT_EQ(calls.front(), "DataTable.Select(\"\", I4 0, 0, missing)");
    EXPECT_THAT(calls,
                ::testing::Contains("ZuEngineContext.CallRoutine(<routine 1>, \"Each\", [0..0: \"a\"])"));
    Scene().contextItems.clear();
}

TEST_F(Classes, InternalOperationsOfAnOpenTableAreRefusedFromOutside) {
    const ComPtr<_ZuDbRef> table = Open();
    TakeCalls();
    for (const wchar_t* name : {L"DataBaseName", L"TableName", L"SetDefinition", L"Open", L"Table",
                                L"CurrentIndex", L"FilterFlagged", L"LookupFlagged"}) {
        const NamedCall call = CallByName(*table.get(), name, {});
        EXPECT_EQ(call.result, DISP_E_EXCEPTION) << std::wstring(name).size();
        EXPECT_EQ(call.inside, kInvalidFriendCall);
    }
    EXPECT_THAT(TakeCalls(), IsEmpty());
    EXPECT_EQ(CallByName(*table.get(), L"NoSuchMember", {}).result, DISP_E_UNKNOWNNAME);
}

}  // namespace zu::contract
