#include "host/engine/Zuproject.h"

#include <vector>

#include "ScriptObject.h"
#include "ServiceTest.h"
#include "TemporaryFolder.h"
#include "com/ComError.h"
#include "com/SafeArray.h"
#include "host/engine/Log.h"
#include "host/service/VariableRecords.h"

namespace zu::test {
namespace {

class ZuprojectTest : public ServiceTest {
protected:
    static com::ComPtr<ZuProject> Project() {
        return com::ComPtr<ZuProject>::Adopt(com::MakeObject<host::Zuproject>().detach());
    }
    template <class T>
    static com::ComPtr<T> Part() {
        com::ComPtr<IDispatch> engine;
        EXPECT_EQ(Project()->Engine(engine.put()), S_OK);
        return engine.as<T>();
    }
    void TearDown() override {
        Part<ZuEngineContext>()->ClearRoutines();
        Part<ZuEngineContext>()->ClearContextItems();
        Part<ZuEngineMessages>()->putref_Listener(nullptr);
        Part<ZuEngineMessages>()->put_Tracing(VARIANT_FALSE);
        ServiceTest::TearDown();
    }
};

TEST_F(ZuprojectTest, TheEngineAnswersItsFiveInterfaces) {
    EXPECT_TRUE(Part<ZuEngineCore>());
    EXPECT_TRUE(Part<ZuEngineContext>());
    EXPECT_TRUE(Part<ZuEngineData>());
    EXPECT_TRUE(Part<ZuEngineMessages>());
    EXPECT_TRUE(Part<ZuEngineUserInterface>());
    EXPECT_EQ(Project()->Engine(nullptr), E_POINTER);
}

TEST_F(ZuprojectTest, AllProjectObjectsOfAThreadAreDoorsToTheSameEngine) {
    const auto script = ScriptObject::Make();
    script->Add(L"Work", [](auto&, VARIANT*, EXCEPINFO*) { return S_OK; });
    EXPECT_EQ(Project()->putref_RoutineHolder(script.get()), S_OK);
    VARIANT_BOOL has = VARIANT_FALSE;
    const com::Bstr name(L"Work");
    EXPECT_EQ(Part<ZuEngineContext>()->HasRoutine(name.get(), &has), S_OK);
    EXPECT_EQ(has, VARIANT_TRUE);
    com::ComPtr<IDispatch> holder;
    Part<ZuEngineContext>()->get_RoutineHolder(holder.put());
    EXPECT_EQ(holder.get(), script.get());
}

TEST_F(ZuprojectTest, RoutinesAreCalledUntilOneAnswersFalse) {
    VARIANT answer{};
    const auto script = ScriptObject::Make();
    script->Add(L"Work", [&](auto&, VARIANT* result, EXCEPINFO*) { return VariantCopy(result, &answer); });
    const auto context = Part<ZuEngineContext>();
    context->putref_RoutineHolder(script.get());
    const com::Bstr name(L"Work");
    com::ComPtr<IDispatch> routine;
    ASSERT_EQ(context->Routine(name.get(), routine.put()), S_OK);
    com::SafeArray arguments = com::SafeArray::NoArguments();
    const auto call = [&](const com::Variant& value) {
        answer = value.get();
        VARIANT_BOOL goOn = VARIANT_FALSE;
        EXPECT_EQ(context->CallRoutine(routine.get(), name.get(), arguments.address(), &goOn), S_OK);
        return goOn == VARIANT_TRUE;
    };
    EXPECT_TRUE(call(com::Variant()));
    EXPECT_TRUE(call(com::Variant(true)));
    EXPECT_TRUE(call(Text(L"Y")));
    EXPECT_FALSE(call(com::Variant(false)));
    EXPECT_FALSE(call(Number(0)));
    EXPECT_FALSE(call(com::Variant::Null()));
    answer = VARIANT{};
}

TEST_F(ZuprojectTest, ARoutinesErrorReachesTheCallerAndTheLastError) {
    const auto script = ScriptObject::Make();
    script->Add(L"Fail", [](auto&, VARIANT*, EXCEPINFO* raised) {
        raised->scode = static_cast<SCODE>(0x800A0BAD);
        raised->bstrDescription = SysAllocString(L"no luck");
        return DISP_E_EXCEPTION;
    });
    const auto context = Part<ZuEngineContext>();
    const com::Bstr name(L"Fail");
    VARIANT_BOOL goOn = VARIANT_TRUE;
    EXPECT_EQ(context->CallRoutine(script.get(), name.get(), nullptr, &goOn),
              static_cast<HRESULT>(0x800A0BAD));
    EXPECT_EQ(goOn, VARIANT_FALSE);
    EXPECT_EQ(LastError().text, L"no luck");
    EXPECT_EQ(context->CallRoutine(nullptr, name.get(), nullptr, &goOn), com::kObjectNotSet);
}

TEST_F(ZuprojectTest, AMissingRoutineFails) {
    com::ComPtr<IDispatch> routine;
    const com::Bstr name(L"Work");
    EXPECT_EQ(Part<ZuEngineContext>()->Routine(name.get(), routine.put()), DISP_E_UNKNOWNNAME);
    EXPECT_FALSE(routine);
    EXPECT_NE(LastError().text.find(L"Work"), std::wstring::npos);
}

TEST_F(ZuprojectTest, ContextItemsAreSetSavedAndPutBack) {
    const auto context = Part<ZuEngineContext>();
    LONG handle = 0;
    ASSERT_EQ(context->ContextItemHandle(2, &handle), S_OK);
    EXPECT_EQ(context->SetContextItem(handle, Number(5)), S_OK);
    com::Variant saved;
    EXPECT_EQ(context->SaveContextItem(handle, saved.put()), S_OK);
    context->SetContextItem(handle, Number(6));
    LONG record = 0;
    context->get_CurrentRecord(&record);
    EXPECT_EQ(record, 6);
    context->SetContextItem(handle, saved);
    context->get_CurrentRecord(&record);
    EXPECT_EQ(record, 5);
    VARIANT_BOOL has = VARIANT_FALSE;
    context->HasContextItem(2, &has);
    EXPECT_EQ(has, VARIANT_TRUE);
    context->ClearContextItem(handle);
    context->HasContextItem(2, &has);
    EXPECT_EQ(has, VARIANT_FALSE);
    EXPECT_EQ(context->ContextItemHandle(0, &handle), E_INVALIDARG);
    EXPECT_EQ(context->SetContextItem(3, Number(1)), E_INVALIDARG);
}

TEST_F(ZuprojectTest, TheViewItemHoldsTheView) {
    const auto context = Part<ZuEngineContext>();
    LONG handle = 0;
    context->ContextItemHandle(6, &handle);
    com::Variant item;
    EXPECT_EQ(context->ContextItem(handle, item.put()), S_OK);
    EXPECT_EQ(item.type(), VT_DISPATCH);
    EXPECT_EQ(item.get().pdispVal, nullptr);
    const auto view = Everything();
    context->SetContextItem(handle, com::Variant(view.get()));
    context->ContextItem(handle, item.put());
    EXPECT_EQ(com::ObjectOf<ZuDataView>(item).get(), view.get());
    com::ComPtr<IDispatch> current;
    context->get_CurrentView(current.put());
    EXPECT_EQ(current.get(), view.get());
    EXPECT_EQ(context->SetContextItem(handle, Number(1)), com::kTypeMismatch);
    LONG count = 0;
    context->get_ContextItemCount(&count);
    EXPECT_EQ(count, 1);
}

TEST_F(ZuprojectTest, ConvertsValues) {
    const auto data = Part<ZuEngineData>();
    VARIANT_BOOL flag = VARIANT_FALSE;
    EXPECT_EQ(data->ToBoolean(Text(L"yes"), &flag), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);
    EXPECT_EQ(data->ToBoolean(Text(L"perhaps"), &flag), com::kTypeMismatch);
    LONG whole = -1;
    EXPECT_EQ(data->ToLong(Text(L" "), &whole), S_OK);
    EXPECT_EQ(whole, 0);
    EXPECT_EQ(data->ToLong(Text(L"12"), &whole), S_OK);
    EXPECT_EQ(whole, 12);
    double number = -1;
    EXPECT_EQ(data->ToDouble(com::Variant::Null(), &number), S_OK);
    EXPECT_EQ(number, 0.0);
    DATE date = 0;
    EXPECT_EQ(data->ToDate(Text(L"1970-01-02"), &date), S_OK);
    EXPECT_EQ(date, 25570.0);
    CURRENCY money{};
    EXPECT_EQ(data->ToCurrency(Text(L"1.5"), &money), S_OK);
    EXPECT_EQ(money.int64, 15000);
    com::Bstr text;
    EXPECT_EQ(data->ToText(com::Variant::Null(), text.put()), S_OK);
    EXPECT_EQ(text.view(), L"");
    EXPECT_EQ(data->ToText(com::Variant(2.5), text.put()), S_OK);
    EXPECT_EQ(text.view(), L"2.5");
    EXPECT_EQ(data->IsBlank(Text(L" "), &flag), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);
    EXPECT_EQ(data->IsBlank(Number(0), &flag), S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
}

TEST_F(ZuprojectTest, TellsDecimalPlacesAndDefaultTechnology) {
    auto& store = host::SettingsStore::Instance();
    store.Put(L"Numbers.SingleDecimals", L"3", nullptr);
    store.Put(L"Numbers.DoubleDecimals", L"5", nullptr);
    const auto data = Part<ZuEngineData>();
    LONG places = -1;
    data->DecimalPlaces(4, &places);
    EXPECT_EQ(places, 3);
    data->DecimalPlaces(5, &places);
    EXPECT_EQ(places, 5);
    data->DecimalPlaces(8, &places);
    EXPECT_EQ(places, 0);
    com::Bstr technology;
    data->DefaultTechnology(technology.put());
    EXPECT_EQ(technology.view(), L"DBF");
    store.Put(L"Numbers.SingleDecimals", L"2", nullptr);
    store.Put(L"Numbers.DoubleDecimals", L"2", nullptr);
}

TEST_F(ZuprojectTest, MakesRecordVariablesAndTheService) {
    const auto data = Part<ZuEngineData>();
    com::ComPtr<IDispatch> variable;
    EXPECT_EQ(data->NewRecordVariable(variable.put()), S_OK);
    EXPECT_TRUE(variable.tryAs<ZuRecordVariable>());
    com::ComPtr<IDispatch> service;
    EXPECT_EQ(data->DatabaseService(service.put()), S_OK);
    EXPECT_TRUE(service.tryAs<ZuDatabaseService>());
}

TEST_F(ZuprojectTest, RecordAddedTakesAView) {
    const auto data = Part<ZuEngineData>();
    EXPECT_EQ(data->RecordAdded(Everything().get()), S_OK);
    EXPECT_EQ(data->RecordAdded(nullptr), com::kObjectNotSet);
    EXPECT_EQ(data->RecordAdded(Project().get()), com::kTypeMismatch);
}

TEST_F(ZuprojectTest, RaiseErrorKeepsTheLastErrorAndTellsTheListener) {
    std::wstring told;
    const auto listener = ScriptObject::Make();
    listener->Add(L"Report", [&](std::vector<VARIANT*>& arguments, VARIANT*, EXCEPINFO*) {
        told = com::View(arguments.at(1)->bstrVal);
        return S_OK;
    });
    const auto messages = Part<ZuEngineMessages>();
    EXPECT_EQ(messages->putref_Listener(listener.get()), S_OK);
    com::SafeArray arguments = com::SafeArray::Of({Text(L"DbfProcess")});
    EXPECT_EQ(messages->RaiseError(static_cast<LONG>(0x8004102C), arguments.address()), S_OK);
    EXPECT_EQ(told, L"DbfProcess needs the name of the routine to call.");
    com::Bstr text;
    Project()->get_LastError(text.put());
    EXPECT_EQ(text.view(), told);
    LONG code = 0;
    Project()->get_LastErrorCode(&code);
    EXPECT_EQ(code, static_cast<LONG>(0x8004102C));
    EXPECT_EQ(Project()->ClearLastError(), S_OK);
    messages->get_LastErrorCode(&code);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(messages->RaiseError(static_cast<LONG>(0x80041031), nullptr), S_OK);
}

TEST_F(ZuprojectTest, AReasonIsToldTheUserOnceAndEndsWithTheNextCall) {
    int told = 0;
    const auto listener = ScriptObject::Make();
    listener->Add(L"Report", [&](std::vector<VARIANT*>&, VARIANT*, EXCEPINFO*) {
        ++told;
        return S_OK;
    });
    EXPECT_EQ(Project()->putref_Listener(listener.get()), S_OK);
    const auto reasons = Project().as<FailureReasons>();
    reasons->BeginCall();
    reasons->TellReason(E_FAIL, L"why", ReasonFor::User);
    reasons->TellReason(E_FAIL, L"why", ReasonFor::User);
    EXPECT_EQ(told, 1);
    reasons->TellReason(kNoCurrentRecord, L"none", ReasonFor::Asking);
    EXPECT_EQ(told, 1);
    reasons->EndCall();
    EXPECT_EQ(LastError().code, kNoCurrentRecord);
    EXPECT_EQ(LastError().text, L"none");
    reasons->BeginCall();
    EXPECT_EQ(LastError().code, 0);
    EXPECT_EQ(LastError().text, L"");
    Project()->putref_Listener(nullptr);
}

TEST_F(ZuprojectTest, MessageTextMakesInsertionsAndReportsNothing) {
    com::SafeArray arguments = com::SafeArray::Of({Number(3), Number(17)});
    com::Bstr text;
    EXPECT_EQ(
        Part<ZuEngineMessages>()->MessageText(static_cast<LONG>(0x8004102D), arguments.address(), text.put()),
        S_OK);
    EXPECT_EQ(text.view(), L"Record 3 of 17");
    EXPECT_EQ(LastError().code, 0);
}

TEST_F(ZuprojectTest, FailedOpensReachTheListener) {
    std::wstring told;
    const auto listener = ScriptObject::Make();
    listener->Add(L"Report", [&](std::vector<VARIANT*>& arguments, VARIANT*, EXCEPINFO*) {
        told = com::View(arguments.at(1)->bstrVal);
        return S_OK;
    });
    Project()->putref_Listener(listener.get());
    com::Bstr database(L"MEM|folder");
    com::Bstr table(L"MISSING");
    com::ComPtr<IDispatch> opened;
    Service()->OpenTable(database.address(), table.address(), opened.put());
    EXPECT_EQ(told, L"Cannot open table \"MISSING\" of database \"MEM|folder\": there is no such table");
}

TEST_F(ZuprojectTest, TracesAndErrorsGoToTheLogFile) {
    const TemporaryFolder folder;
    const auto project = Project();
    const auto put = [&](const wchar_t* name, const std::wstring& value) {
        const com::Bstr key(name);
        const com::Bstr text(value);
        EXPECT_EQ(project->put_Setting(key.get(), text.get()), S_OK);
    };
    put(L"Log.Level", L"debug");
    put(L"Log.File", folder.path() + L"\\engine.log");
    com::Bstr file;
    project->get_LogFile(file.put());
    EXPECT_EQ(file.view(), folder.path() + L"\\engine.log");
    const com::Bstr trace(L"entered DbfProcess");
    Part<ZuEngineMessages>()->Trace(trace.get());
    Part<ZuEngineMessages>()->RaiseError(static_cast<LONG>(0x80041031), nullptr);
    put(L"Log.File", L"");
    const std::string log = folder.Read(L"engine.log");
    EXPECT_NE(log.find("debug entered DbfProcess\r\n"), std::string::npos);
    EXPECT_NE(log.find("error The update list must hold pairs"), std::string::npos);
}

TEST_F(ZuprojectTest, SettingsAreReadAndChangedByName) {
    const auto project = Project();
    const com::Bstr name(L"Data.CodePage");
    const com::Bstr bad(L"none");
    com::Bstr text;
    EXPECT_EQ(project->get_Setting(name.get(), text.put()), S_OK);
    EXPECT_EQ(text.view(), L"1252");
    EXPECT_EQ(project->put_Setting(name.get(), bad.get()), E_INVALIDARG);
    EXPECT_EQ(ErrorText(),
              L"Setting Data.CodePage cannot be \"none\", expected the number of a known code page");
    const com::Bstr unknown(L"Data.Colour");
    EXPECT_EQ(project->get_Setting(unknown.get(), text.put()), E_INVALIDARG);
    EXPECT_EQ(project->put_Setting(unknown.get(), bad.get()), E_INVALIDARG);
}

TEST_F(ZuprojectTest, TheDataFolderBecomesAbsolute) {
    const auto project = Project();
    const com::Bstr relative(L"tables");
    EXPECT_EQ(project->put_DataFolder(relative.get()), S_OK);
    com::Bstr folder;
    Part<ZuEngineData>()->get_DataFolder(folder.put());
    EXPECT_TRUE(folder.view().ends_with(L"\\tables"));
    EXPECT_EQ(folder.view()[1], L':');
    project->put_DataFolder(nullptr);
    project->get_DataFolder(folder.put());
    EXPECT_EQ(folder.view(), L"");
}

TEST_F(ZuprojectTest, KeepsTheOwnerWindow) {
    const auto windows = Part<ZuEngineUserInterface>();
    LONG window = -1;
    windows->OwnerWindow(&window);
    EXPECT_EQ(window, 0);
    EXPECT_EQ(windows->SetOwnerWindow(0x1234), S_OK);
    Part<ZuEngineUserInterface>()->OwnerWindow(&window);
    EXPECT_EQ(window, 0x1234);
    windows->SetOwnerWindow(0);
    VARIANT_BOOL interactive = VARIANT_FALSE;
    windows->get_Interactive(&interactive);
    EXPECT_EQ(interactive, VARIANT_TRUE);
}

TEST_F(ZuprojectTest, ScriptsReachEveryInterfaceByName) {
    const auto made = Project();
    const LateBound project(made.get());
    const LateBound engine = project.Object(L"Engine");
    ASSERT_TRUE(engine) << com::Bstr(project.error()).get();
    EXPECT_EQ(engine.Get(L"Name").ToText().view(), L"Zuengine");
    EXPECT_EQ(engine.Get(L"DefaultTechnology").ToText().view(), L"DBF");
    EXPECT_TRUE(engine.Get(L"ToBoolean", {Text(L"on")}).ToBoolean());
    EXPECT_EQ(engine.Get(L"OwnerWindow").ToLong(), 0);
    EXPECT_FALSE(engine.Get(L"Version").ToText().empty());
    engine.Get(L"RaiseError",
               {Number(static_cast<LONG>(0x80041030)), com::SafeArray::Of({Text(L"x")}).ToVariant()});
    EXPECT_EQ(engine.result(), S_OK) << com::Bstr(engine.error()).get();
    EXPECT_EQ(project.Get(L"LastError").ToText().view(), L"\"x\" was not found.");
    project.Get(L"ClearLastError");
    EXPECT_EQ(project.Get(L"LastErrorCode").ToLong(), 0);
    EXPECT_TRUE(project.Object(L"DatabaseService"));
}

TEST_F(ZuprojectTest, ScriptsSetTheRoutineHolderWithAndWithoutSet) {
    const auto made = Project();
    const LateBound project(made.get());
    const auto script = ScriptObject::Make();
    project.PutObject(L"RoutineHolder", script.get());
    EXPECT_EQ(project.Object(L"RoutineHolder").get(), script.get());
    project.PutObject(L"RoutineHolder", nullptr);
    EXPECT_EQ(project.result(), S_OK);
    project.Put(L"RoutineHolder", com::Variant(script.get()));
    EXPECT_EQ(project.result(), S_OK) << com::Bstr(project.error()).get();
    EXPECT_EQ(project.Object(L"RoutineHolder").get(), script.get());
}

}  // namespace
}  // namespace zu::test
