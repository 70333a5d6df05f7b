// The start on a thread: how the engine is obtained, and what happens when it is not, or not whole.
#include "tests/contract/ContractTest.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using fake::FakeServer;
using fake::Journal;
using fake::Scene;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Creates the Functions object itself, after the test has set its scene.
class EngineStart : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        Scene() = fake::Scenario();
        FakeServer::OfThread() = FakeServer();
        Journal::OfThread().Clear();
    }
    void TearDown() override {
        Scene() = fake::Scenario();
        FakeServer::OfThread() = FakeServer();
        functions_.reset();
        CoUninitialize();
        EXPECT_EQ(Journal::OfThread().Live(), 0u) << Journal::OfThread().LiveText();
        EXPECT_EQ(ComponentCanUnload(), S_OK);
    }
    void Start() {
        functions_ = Create(L"ZuDBFFunctions.Functions").tryAs<_Functions>();
        ASSERT_TRUE(functions_);
        ComPtr<IErrorInfo> information;
        EXPECT_EQ(GetErrorInfo(0, information.put()), S_FALSE) << "the start is silent";
    }
    /// Calls every function that needs the engine, and expects each one's failure value.
    void ExpectFailureOfAll() {
        const Variant table(L"X|d>t");
        ComPtr<_ZuDbRef> reference;
        EXPECT_EQ(functions_->DbfOpen(table, reference.put()), S_OK);
        EXPECT_FALSE(reference);
        ComPtr<ZuDataView> view;
        EXPECT_EQ(functions_->DbfSelect(table, nullptr, nullptr, 0, view.put()), S_OK);
        EXPECT_FALSE(view);
        EXPECT_EQ(functions_->DbfLookup(table, nullptr, Variant::Missing(), nullptr, 1, view.put()), S_OK);
        EXPECT_FALSE(view);
        LONG count = 5;
        EXPECT_EQ(functions_->DbfCount(table, nullptr, &count), S_OK);
        EXPECT_EQ(count, -1);
        VARIANT_BOOL flag = VARIANT_TRUE;
        EXPECT_EQ(functions_->DbfTop(nullptr, &flag), S_OK);
        EXPECT_EQ(flag, VARIANT_FALSE);
        flag = VARIANT_TRUE;
        EXPECT_EQ(functions_->DbfBottom(nullptr, &flag), S_OK);
        EXPECT_EQ(flag, VARIANT_FALSE);
        LONG number = 5;
        EXPECT_EQ(functions_->DbfRecNo(nullptr, &number), S_OK);
        EXPECT_EQ(number, 0);
        Variant value(L"A");
        Variant result(L"old");
        EXPECT_EQ(functions_->Descend(value.address(), nullptr, result.put()), S_OK);
        EXPECT_EQ(result.type(), VT_EMPTY);
        EXPECT_EQ(functions_->DbfVarDeclare(table, view.put()), S_OK);
        EXPECT_FALSE(view);
        ComPtr<IErrorInfo> information;
        EXPECT_EQ(GetErrorInfo(0, information.put()), S_FALSE);
    }

    ComPtr<_Functions> functions_;
};

TEST_F(EngineStart, TakesTheEngineFromTheProjectAndLetsTheProjectGo) {
    Start();
    EXPECT_THAT(Journal::OfThread().calls(), ElementsAre("Create(Zuengine.Zuproject)", "ZuProject.Engine()"));
    EXPECT_EQ(Journal::OfThread().Live("engine"), 1u);
    EXPECT_EQ(Journal::OfThread().Live("project"), 0u);
}

TEST_F(EngineStart, HappensOncePerThread) {
    Start();
    const auto second = Create(L"ZuDBFFunctions.Functions");
    const auto table = Create(L"ZuDBFFunctions.ZuDbRef");
    functions_->DbfCount(Variant(L"X|d>t"), nullptr, std::make_unique<LONG>().get());
    EXPECT_EQ(Journal::OfThread().Live("engine"), 1u);
    EXPECT_EQ(std::count(Journal::OfThread().calls().begin(), Journal::OfThread().calls().end(),
                         "ZuProject.Engine()"),
              1);
}

TEST_F(EngineStart, HappensWithTheFirstObjectOfAnyClass) {
    for (const wchar_t* name : {L"ZuDbRef", L"ZuDbfControl", L"ZuImportFormats", L"ZuImportFormat",
                                L"ZuExportFormats", L"ZuExportFormat"}) {
        EXPECT_TRUE(Create((std::wstring(L"ZuDBFFunctions.") + name).c_str())) << std::string(name, name + 6);
        EXPECT_EQ(Journal::OfThread().calls().size(), 2u);
    }
}

TEST_F(EngineStart, EngineStaysForTheThreadWhenTheObjectsAreGone) {
    Start();
    functions_.reset();
    EXPECT_EQ(Journal::OfThread().Live("engine"), 1u);
    EXPECT_EQ(ComponentCanUnload(), S_FALSE) << "the thread's state waits for the end of the apartment";
    Start();
    EXPECT_EQ(Journal::OfThread().calls().size(), 2u);
}

TEST_F(EngineStart, EngineIsReleasedWithTheApartmentAndObtainedAnewInTheNext) {
    Start();
    functions_.reset();
    CoUninitialize();
    EXPECT_EQ(Journal::OfThread().Live(), 0u);
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    Start();
    EXPECT_EQ(Journal::OfThread().calls().size(), 4u);
}

TEST_F(EngineStart, NestedInitialisationKeepsTheEngine) {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_FALSE);
    Start();
    CoUninitialize();
    EXPECT_EQ(Journal::OfThread().Live("engine"), 1u);
    LONG count = 0;
    EXPECT_EQ(functions_->DbfCount(Variant(L"X|d>t"), nullptr, &count), S_OK);
    EXPECT_EQ(count, 3);
}

TEST_F(EngineStart, EngineThatIsNotToBeHadMakesEveryFunctionAnswerItsFailureValue) {
    for (const HRESULT code : {REGDB_E_CLASSNOTREG, E_ACCESSDENIED, E_OUTOFMEMORY}) {
        FakeServer::OfThread().classObject = code;
        Start();
        ExpectFailureOfAll();
        functions_.reset();
        CoUninitialize();
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    }
    EXPECT_THAT(Journal::OfThread().calls(), IsEmpty());
}

TEST_F(EngineStart, ProjectThatIsNoneMakesEveryFunctionAnswerItsFailureValue) {
    Scene().withheld = {__uuidof(ZuProject)};
    Start();
    ExpectFailureOfAll();
}

TEST_F(EngineStart, FailureOfEachStepMakesEveryFunctionAnswerItsFailureValue) {
    for (const char* operation : {"Create", "ZuProject.Engine"}) {
        for (const bool fails : {true, false}) {
            Journal::OfThread().Clear();
            if (fails) {
                Journal::OfThread().FailOn(operation);
            } else {
                Journal::OfThread().AnswerNothingOn(operation);
            }
            Start();
            ExpectFailureOfAll();
            EXPECT_EQ(Journal::OfThread().Live(), 0u);
            functions_.reset();
            CoUninitialize();
            ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        }
    }
}

TEST_F(EngineStart, IsNotRepeatedOnAThreadWhereItFailed) {
    Journal::OfThread().FailOn("ZuProject.Engine");
    Start();
    ExpectFailureOfAll();
    EXPECT_THAT(Journal::OfThread().calls(), ElementsAre("Create(Zuengine.Zuproject)", "ZuProject.Engine()"));
}

TEST_F(EngineStart, InterfacesBeforeTheMissingOneAreThereAndTheOthersAreNot) {
    // The order is core, context, data, messages, user interface.
    struct Step {
        IID missing;
        bool context;
        bool data;
    };
    for (const Step& step :
         {Step{__uuidof(ZuEngineCore), false, false}, Step{__uuidof(ZuEngineContext), false, false},
          Step{__uuidof(ZuEngineData), true, false}, Step{__uuidof(ZuEngineMessages), true, true},
          Step{__uuidof(ZuEngineUserInterface), true, true}}) {
        Journal::OfThread().Clear();
        Scene().withheld = {step.missing};
        Start();
        Journal::OfThread().Clear();
        VARIANT_BOOL flag = VARIANT_FALSE;
        EXPECT_EQ(functions_->DbfTop(nullptr, &flag), S_OK);
        EXPECT_EQ(Journal::OfThread().calls().empty(), !step.context);
        LONG count = 0;
        EXPECT_EQ(functions_->DbfCount(Variant(L"X|d>t"), nullptr, &count), S_OK);
        EXPECT_EQ(count, step.data ? 3 : -1);
        functions_.reset();
        CoUninitialize();
        EXPECT_EQ(Journal::OfThread().Live(), 0u);
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    }
}

TEST_F(EngineStart, WorksInAnApartmentThatBeginsAfterTheFirstUseWithoutOne) {
    using GetClassObject = HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**);
    CoUninitialize();
    const HMODULE module = LoadLibraryW(L"ZuDBFFunctions.dll");
    const auto getClassObject = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(getClassObject(__uuidof(::Functions), IID_IClassFactory, factory.putVoid()), S_OK);
    ASSERT_EQ(
        factory->CreateInstance(nullptr, __uuidof(_Functions), reinterpret_cast<void**>(functions_.put())),
        S_OK);
    factory.reset();
    ExpectFailureOfAll();
    EXPECT_THAT(Journal::OfThread().calls(), IsEmpty());
    EXPECT_EQ(ComponentCanUnload(), S_FALSE);
    functions_.reset();
    EXPECT_EQ(ComponentCanUnload(), S_OK) << "a thread without an apartment keeps nothing";
    FreeLibrary(module);

    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    Start();
    LONG count = 0;
    EXPECT_EQ(functions_->DbfCount(Variant(L"X|d>t"), nullptr, &count), S_OK);
    EXPECT_EQ(count, 3);
}

}  // namespace zu::contract
