// Every call that a function makes on the engine fails once, and answers nothing once: the function must
// answer its failure value, leave nothing behind, and work again right after.
#include <functional>
#include <map>

#include "tests/contract/Arrays.h"
#include "tests/contract/ContractTest.h"
#include "tests/contract/fake/Rendering.h"

namespace zu::contract {

using com::Bstr;
using com::ComPtr;
using com::Variant;
using fake::Journal;
using fake::Scene;

namespace {

constexpr const wchar_t* kTable = L"d>t";

template <class T>
std::string ObjectText(const ComPtr<T>& object) {
    return object ? "object" : "no object";
}

}  // namespace

/// One function with what it answers: normally, on failure, and after the failure of calls that it survives.
struct FaultCase {
    std::string name;
    std::function<std::string(_Functions&)> call;
    std::string success;
    std::string failure;
    std::map<std::string, std::string> survived;
    /// Calls that the function makes, at least.
    int calls;
};

void PrintTo(const FaultCase& fault, std::ostream* stream) {
    *stream << fault.name;
}

namespace {

/// The default technology may fail: the table is then opened under the name without it.
const std::map<std::string, std::string> kNamesSurvive = {{"ZuEngineData.DefaultTechnology", "object"}};

std::vector<FaultCase> Cases() {
    const auto withNames = [](std::map<std::string, std::string> more) {
        more.insert(kNamesSurvive.begin(), kNamesSurvive.end());
        return more;
    };
    std::vector<FaultCase> cases;
    cases.push_back({"DbfOpen",
                     [](_Functions& functions) {
                         ComPtr<_ZuDbRef> table;
                         EXPECT_EQ(functions.DbfOpen(Variant(kTable), table.put()), S_OK);
                         return ObjectText(table);
                     },
                     "object", "no object", kNamesSurvive, 3});
    cases.push_back({"DbfSelect",
                     [](_Functions& functions) {
                         ComPtr<ZuDataView> view;
                         EXPECT_EQ(
                             functions.DbfSelect(Variant(kTable), Bstr(L"A>1").get(), nullptr, 0, view.put()),
                             S_OK);
                         return ObjectText(view);
                     },
                     "object", "no object", kNamesSurvive, 4});
    cases.push_back({"DbfLookupByKey",
                     [](_Functions& functions) {
                         ComPtr<ZuDataView> view;
                         Variant key = Array({Variant(L"A"), Variant(false), Variant(L"B")});
                         EXPECT_EQ(functions.DbfLookup(Variant(kTable), key.address(), Variant::Missing(),
                                                       nullptr, 1, view.put()),
                                   S_OK);
                         return ObjectText(view);
                     },
                     "object", "no object", withNames({{"DataTable.OpenIndex", "object"}}), 14});
    cases.push_back({"DbfLookupByCondition",
                     [](_Functions& functions) {
                         ComPtr<ZuDataView> view;
                         Variant key(L"A=1");
                         EXPECT_EQ(functions.DbfLookup(Variant(kTable), key.address(), Variant::Missing(),
                                                       nullptr, 1, view.put()),
                                   S_OK);
                         return ObjectText(view);
                     },
                     "object", "no object", kNamesSurvive, 4});
    cases.push_back({"DbfCount",
                     [](_Functions& functions) {
                         LONG count = 0;
                         EXPECT_EQ(functions.DbfCount(Variant(kTable), nullptr, &count), S_OK);
                         return std::to_string(count);
                     },
                     "3",
                     "-1",
                     {{"ZuEngineData.DefaultTechnology", "3"}},
                     5});
    cases.push_back({"DbfTop",
                     [](_Functions& functions) {
                         VARIANT_BOOL top = VARIANT_FALSE;
                         EXPECT_EQ(functions.DbfTop(nullptr, &top), S_OK);
                         return fake::Show(top);
                     },
                     "True",
                     "False",
                     {},
                     3});
    cases.push_back({"DbfBottom",
                     [](_Functions& functions) {
                         VARIANT_BOOL bottom = VARIANT_FALSE;
                         EXPECT_EQ(functions.DbfBottom(nullptr, &bottom), S_OK);
                         return fake::Show(bottom);
                     },
                     "True",
                     "False",
                     {},
                     4});
    cases.push_back({"DbfRecNo",
                     [](_Functions& functions) {
                         LONG number = 77;
                         EXPECT_EQ(functions.DbfRecNo(Scene().contextItems[107].address(), &number), S_OK);
                         return std::to_string(number);
                     },
                     "4711",
                     "0",
                     {{"ZuDataView.Fields", "2"}, {"ZuDataFields.Item", "2"}, {"ZuDataField.Value", "2"}},
                     4});
    cases.push_back({"Descend",
                     [](_Functions& functions) {
                         Variant value(L"A");
                         Variant result;
                         EXPECT_EQ(functions.Descend(value.address(), nullptr, result.put()), S_OK);
                         return fake::Show(result.get());
                     },
                     "\"descended\"",
                     "Empty",
                     {},
                     3});
    cases.push_back({"DbfVarDeclare",
                     [](_Functions& functions) {
                         ComPtr<ZuDataView> view;
                         EXPECT_EQ(functions.DbfVarDeclare(Variant(kTable), view.put()), S_OK);
                         return ObjectText(view);
                     },
                     "object", "no object", kNamesSurvive, 6});
    cases.push_back({"Filter",
                     [](_Functions& functions) {
                         ComPtr<_ZuDbRef> table;
                         ComPtr<ZuDataView> view;
                         functions.DbfOpen(Variant(kTable), table.put());
                         if (!table) return ObjectText(view);
                         EXPECT_EQ(table->Filter(Variant(L""), 0, nullptr, view.put()), S_OK);
                         return ObjectText(view);
                     },
                     "object", "no object", kNamesSurvive, 4});
    cases.push_back({"Lookup",
                     [](_Functions& functions) {
                         ComPtr<_ZuDbRef> table;
                         ComPtr<ZuDataView> view;
                         functions.DbfOpen(Variant(kTable), table.put());
                         if (!table) return ObjectText(view);
                         VARIANT_BOOL opened = VARIANT_FALSE;
                         EXPECT_EQ(table->OpenIndex(nullptr, &opened), S_OK);
                         Variant key(L"A");
                         EXPECT_EQ(table->Lookup(key.address(), Variant::Missing(), 0, nullptr, view.put()),
                                   S_OK);
                         return ObjectText(view);
                     },
                     "object", "no object", withNames({{"DataTable.OpenIndex", "object"}}), 12});
    cases.push_back({"DbfReplace",
                     [](_Functions& functions) {
                         VARIANT list = Array({L"NAME", L"x"}).detach();
                         Variant result;
                         EXPECT_EQ(functions.DbfReplace(&list.parray, result.put()), S_OK);
                         VariantClear(&list);
                         return fake::Show(result.get());
                     },
                     "True",
                     "Empty",
                     {},
                     6});
    cases.push_back({"DbfAddNew",
                     [](_Functions& functions) {
                         ZuDataView* values = com::ObjectOf<ZuDataView>(Scene().contextItems[107]).detach();
                         VARIANT_BOOL added = VARIANT_FALSE;
                         EXPECT_EQ(functions.DbfAddNew(Variant(kTable), &values, &added), S_OK);
                         ComPtr<ZuDataView>::Adopt(values).reset();
                         return fake::Show(added);
                     },
                     "True",
                     "False",
                     {{"ZuEngineData.DefaultTechnology", "True"}, {"DataTable.OpenIndex", "True"}},
                     9});
    cases.push_back(
        {"DbfConditionalAddNew",
         [](_Functions& functions) {
             Scene().records = 0;
             ZuDataView* values = com::ObjectOf<ZuDataView>(Scene().contextItems[107]).detach();
             VARIANT_BOOL added = VARIANT_FALSE;
             Variant key(L"A");
             EXPECT_EQ(functions.DbfConditionalAddNew(Variant(kTable), &values, key.address(), &added), S_OK);
             ComPtr<ZuDataView>::Adopt(values).reset();
             return fake::Show(added);
         },
         "True",
         "False",
         {{"ZuEngineData.DefaultTechnology", "True"}, {"DataTable.OpenIndex", "True"}},
         16});
    cases.push_back(
        {"DbfUpdate",
         [](_Functions& functions) {
             VARIANT list = Array({L"NAME", L"x"}).detach();
             Variant key(L"A");
             VARIANT_BOOL updated = VARIANT_FALSE;
             EXPECT_EQ(functions.DbfUpdate(Variant(kTable), key.address(), &list.parray, &updated), S_OK);
             VariantClear(&list);
             return fake::Show(updated);
         },
         "True",
         "False",
         {{"ZuEngineData.DefaultTechnology", "True"}, {"DataTable.OpenIndex", "True"}},
         16});
    cases.push_back({"DbfUpdateReport",
                     [](_Functions& functions) {
                         VARIANT list = Array({L"NAME"}).detach();
                         VARIANT_BOOL updated = VARIANT_FALSE;
                         EXPECT_EQ(functions.DbfUpdate(Variant(kTable), nullptr, &list.parray, &updated),
                                   S_OK);
                         VariantClear(&list);
                         return fake::Show(updated);
                     },
                     "False",
                     "False",
                     {},
                     1});
    cases.push_back({"DbfModify",
                     [](_Functions& functions) {
                         VARIANT_BOOL modified = VARIANT_FALSE;
                         EXPECT_EQ(functions.DbfModify(Variant(kTable), Variant(kTable), &modified), S_OK);
                         return fake::Show(modified);
                     },
                     "False",
                     "False",
                     {},
                     1});
    cases.push_back(
        {"DbfDeleteByKey",
         [](_Functions& functions) {
             Variant key(L"A");
             LONG deleted = 77;
             EXPECT_EQ(functions.DbfDelete(Variant(kTable), key.address(), VARIANT_TRUE, 2, &deleted), S_OK);
             return std::to_string(deleted);
         },
         "2",
         "0",
         {{"ZuEngineData.DefaultTechnology", "2"}, {"DataTable.OpenIndex", "2"}},
         15});
    cases.push_back(
        {"DbfDeleteByCondition",
         [](_Functions& functions) {
             Variant key(L"A=1");
             LONG deleted = 77;
             EXPECT_EQ(functions.DbfDelete(Variant(kTable), key.address(), VARIANT_TRUE, 2, &deleted), S_OK);
             return std::to_string(deleted);
         },
         "2",
         "0",
         {{"ZuEngineData.DefaultTechnology", "2"}},
         8});
    cases.push_back({"DbfUndelete",
                     [](_Functions& functions) {
                         VARIANT_BOOL done = VARIANT_FALSE;
                         EXPECT_EQ(functions.DbfUndelete(Variant(kTable), nullptr, &done), S_OK);
                         return fake::Show(done);
                     },
                     "True",
                     "False",
                     {{"ZuEngineData.DefaultTechnology", "True"}},
                     3});
    cases.push_back({"DbfCleanup",
                     [](_Functions& functions) {
                         VARIANT_BOOL done = VARIANT_FALSE;
                         EXPECT_EQ(functions.DbfCleanup(Variant(kTable), &done), S_OK);
                         return fake::Show(done);
                     },
                     "True",
                     "False",
                     {{"ZuEngineData.DefaultTechnology", "True"}},
                     3});
    cases.push_back({"DbfIndex",
                     [](_Functions& functions) {
                         VARIANT list = Array({L"NAME", L"CITY"}).detach();
                         VARIANT_BOOL built = VARIANT_FALSE;
                         EXPECT_EQ(functions.DbfIndex(Variant(kTable), &list.parray, &built), S_OK);
                         VariantClear(&list);
                         return fake::Show(built);
                     },
                     "True",
                     "False",
                     {{"ZuEngineData.DefaultTechnology", "True"}},
                     7});
    cases.push_back({"DbfToDbf",
                     [](_Functions& functions) {
                         Variant rows;
                         Variant failed;
                         VARIANT_BOOL copied = VARIANT_FALSE;
                         EXPECT_EQ(
                             functions.DbfToDbf(Variant(kTable), Variant(L"d>u"), nullptr, Variant::Missing(),
                                                0, rows.address(), nullptr, failed.address(), &copied),
                             S_OK);
                         return fake::Show(copied);
                     },
                     "True",
                     "False",
                     {{"ZuEngineData.DefaultTechnology", "True"}, {"DataTable.OpenIndex", "True"}},
                     50});
    cases.push_back({"DbfFromDbf",
                     [](_Functions& functions) {
                         Variant rows;
                         Variant failed;
                         VARIANT_BOOL copied = VARIANT_FALSE;
                         const Variant none = Variant::Missing();
                         EXPECT_EQ(
                             functions.DbfFromDbf(Variant(L"d>u"), Variant(kTable), nullptr, none, 0, none,
                                                  rows.address(), nullptr, failed.address(), &copied),
                             S_OK);
                         return fake::Show(copied);
                     },
                     "True",
                     "False",
                     {{"ZuEngineData.DefaultTechnology", "True"}, {"DataTable.OpenIndex", "True"}},
                     30});
    cases.push_back({"DbfFromDbfCorresponding",
                     [](_Functions& functions) {
                         Variant rows;
                         Variant failed;
                         VARIANT_BOOL copied = VARIANT_FALSE;
                         const Variant none = Variant::Missing();
                         EXPECT_EQ(functions.DbfFromDbfCorresponding(Variant(L"d>u"), Variant(kTable),
                                                                     nullptr, none, 0, none, rows.address(),
                                                                     nullptr, failed.address(), &copied),
                                   S_OK);
                         return fake::Show(copied);
                     },
                     "True",
                     "False",
                     // by name, a field that fails only costs the row that field
                     {{"ZuEngineData.DefaultTechnology", "True"},
                      {"DataTable.OpenIndex", "True"},
                      {"ZuDataFields.Item", "True"},
                      {"ZuDataField.Name", "True"},
                      {"ZuDataField.Value", "True"}},
                     30});
    return cases;
}

}  // namespace

class Faults : public ContractTest, public ::testing::WithParamInterface<FaultCase> {
protected:
    void SetUp() override {
        ContractTest::SetUp();
        Scene().keyFields = 2;
        Scene().fields = {{L"##RECNO", VT_I4, Variant(LONG{4711})}, {L"NAME", VT_BSTR, Variant(L"x")}};
        Scene().records = 1;
        Scene().contextItems[106] = Variant(Select().get());  // at the top and at the bottom
        Scene().records = 3;
        Scene().position = 2;
        Scene().contextItems[107] = Variant(Select().get());
        Scene().position = 0;
        TakeCalls();
        liveBefore_ = LiveObjects();
    }
    void ExpectNothingLeft(int n) {
        EXPECT_EQ(LiveObjects(), liveBefore_) << "after the fault at call " << n << "\n"
                                              << Journal::OfThread().LiveText();
    }

    std::size_t liveBefore_ = 0;
};

TEST_P(Faults, FailureOfEachCallInTurnGivesTheFailureValue) {
    const FaultCase& fault = GetParam();
    for (const HRESULT code : {E_FAIL, DISP_E_EXCEPTION, static_cast<HRESULT>(0x80041017), E_OUTOFMEMORY}) {
        int n = 1;
        for (;; ++n) {
            Journal::OfThread().FailAt(n, code);
            const std::string answer = fault.call(functions());
            if (!Journal::OfThread().faultPlayed()) {
                EXPECT_EQ(answer, fault.success);
                break;
            }
            const std::string operation = Journal::OfThread().faultyOperation();
            const auto survived = fault.survived.find(operation);
            EXPECT_EQ(answer, survived == fault.survived.end() ? fault.failure : survived->second)
                << "call " << n << ": " << operation;
            ExpectNothingLeft(n);
            Journal::OfThread().Clear();
            ASSERT_EQ(fault.call(functions()), fault.success) << "after " << operation;
            Journal::OfThread().Clear();
        }
        EXPECT_GT(n, fault.calls);
    }
}

TEST_P(Faults, NothingFromEachCallInTurnDoesNoHarm) {
    const FaultCase& fault = GetParam();
    for (int n = 1;; ++n) {
        Journal::OfThread().AnswerNothingAt(n);
        fault.call(functions());
        if (!Journal::OfThread().faultPlayed()) break;
        ExpectNothingLeft(n);
        Journal::OfThread().Clear();
        ASSERT_EQ(fault.call(functions()), fault.success);
        Journal::OfThread().Clear();
    }
}

TEST_P(Faults, InterfaceThatIsWithheldDoesNoHarm) {
    const FaultCase& fault = GetParam();
    for (const IID& id : {__uuidof(ZuDatabaseService), __uuidof(DataTable), __uuidof(ZuDataView),
                          __uuidof(ZuRecordVariable)}) {
        Scene().withheld = {id};
        fault.call(functions());
        ExpectNothingLeft(0);
        Scene().withheld.clear();
        ASSERT_EQ(fault.call(functions()), fault.success);
    }
}

INSTANTIATE_TEST_SUITE_P(Functions, Faults, ::testing::ValuesIn(Cases()),
                         [](const auto& parameter) { return parameter.param.name; });

/// Process answers the count that it reached, so its failures are looked at one by one.
class ProcessFaults : public ContractTest {};

TEST_F(ProcessFaults, FailureOfEachCallInTurnKeepsTheCountReached) {
    const ComPtr<_ZuDbRef> table = Open();
    int faults = 0;
    for (int n = 1;; ++n) {
        Journal::OfThread().Clear();
        Scene().contextItems.clear();
        Journal::OfThread().FailAt(n);
        LONG processed = 77;
        EXPECT_EQ(
            table->Process(Bstr(L"Each").get(), nullptr, Variant::Missing(), 0, nullptr, nullptr, nullptr,
                           nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &processed),
            S_OK);
        if (!Journal::OfThread().faultPlayed()) {
            EXPECT_EQ(processed, 3);
            break;
        }
        ++faults;
        const std::string& operation = Journal::OfThread().faultyOperation();
        LONG answered = 0;
        for (const std::string& call : Journal::OfThread().calls()) {
            if (call.find("ZuEngineContext.CallRoutine") == 0) ++answered;
        }
        if (operation == "ZuEngineContext.CallRoutine") --answered;
        EXPECT_EQ(processed, answered) << "call " << n << ": " << operation;
        EXPECT_EQ(Journal::OfThread().calls().size(), static_cast<std::size_t>(n))
            << "nothing is called after a failure; call " << n << ": " << operation;
        Scene().contextItems.clear();
        EXPECT_EQ(LiveObjects(), 1u) << "only the table is left";
    }
    EXPECT_EQ(faults, 23);
    Scene().contextItems.clear();
}

TEST_F(ProcessFaults, NothingFromEachCallInTurnDoesNoHarm) {
    const ComPtr<_ZuDbRef> table = Open();
    for (int n = 1;; ++n) {
        Journal::OfThread().Clear();
        Scene().contextItems.clear();
        Journal::OfThread().AnswerNothingAt(n);
        LONG processed = 77;
        EXPECT_EQ(
            table->Process(Bstr(L"Each").get(), nullptr, Variant::Missing(), 0, nullptr, nullptr, nullptr,
                           nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &processed),
            S_OK);
        if (!Journal::OfThread().faultPlayed()) break;
        EXPECT_LE(processed, 4);
        Scene().contextItems.clear();
        EXPECT_EQ(LiveObjects(), 1u) << "call " << n;
    }
    Scene().contextItems.clear();
}

TEST_F(ProcessFaults, FailureOfEachCallOfDbfProcessInTurnKeepsTheCountReached) {
    int faults = 0;
    for (int n = 1;; ++n) {
        Journal::OfThread().Clear();
        Scene().contextItems.clear();
        Journal::OfThread().FailAt(n);
        LONG processed = 77;
        EXPECT_EQ(functions().DbfProcess(Variant(L"X|d>t"), Bstr(L"Each").get(), nullptr, nullptr, 0, nullptr,
                                         nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                         nullptr, nullptr, &processed),
                  S_OK);
        Scene().contextItems.clear();
        if (!Journal::OfThread().faultPlayed()) {
            EXPECT_EQ(processed, 3);
            break;
        }
        ++faults;
        const std::string& operation = Journal::OfThread().faultyOperation();
        LONG answered = 0;
        for (const std::string& call : Journal::OfThread().calls()) {
            if (call.find("ZuEngineContext.CallRoutine") == 0) ++answered;
        }
        if (operation == "ZuEngineContext.CallRoutine") --answered;
        EXPECT_EQ(processed, answered) << "call " << n << ": " << operation;
        EXPECT_EQ(LiveObjects(), 0u);
    }
    EXPECT_EQ(faults, 26);
}

}  // namespace zu::contract
