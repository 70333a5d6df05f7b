#include <array>

#include "bench/client/Client.h"
#include "bench/client/Routine.h"
#include "com/ComError.h"

namespace zu::bench {
namespace {

using com::Bstr;
using com::Check;
using com::Variant;

// The routine's own cost: what the engine calls, without an engine.
double CallBare(IDispatch* holder, LONG times) {
    wchar_t name[] = L"Touch";
    LPOLESTR names = name;
    DISPID id = DISPID_UNKNOWN;
    Check(holder->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_INVARIANT, &id));
    std::array<Variant, 2> values = {Variant(LONG{2}), Variant(LONG{1})};
    std::array<VARIANTARG, 2> arguments{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        arguments[i].vt = VT_BYREF | VT_VARIANT;
        arguments[i].pvarVal = values[i].address();
    }
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    double done = 0;
    for (LONG i = 0; i < times; ++i) {
        Variant result;
        Check(holder->Invoke(id, IID_NULL, LOCALE_INVARIANT, DISPATCH_METHOD, &parameters, result.put(),
                             nullptr, nullptr));
        if (result.ToBoolean()) ++done;
    }
    return done;
}

double CallForRecords(const Client& client, const Work& work, IDispatch* holder) {
    Check(client.project()->putref_RoutineHolder(holder));
    const Variant table(work.table);
    const Bstr name(L"Touch");
    Variant first(LONG{1});
    Variant second(LONG{2});
    std::array<Variant, 8> missing;
    missing.fill(Variant::Missing());
    LONG done = 0;
    Check(client.functions()->DbfProcess(
        table.get(), name.get(), nullptr, nullptr, 0, first.address(), second.address(), missing[0].address(),
        missing[1].address(), missing[2].address(), missing[3].address(), missing[4].address(),
        missing[5].address(), missing[6].address(), missing[7].address(), &done));
    Check(client.project()->putref_RoutineHolder(nullptr));
    return done;
}

}  // namespace

// The form "bare-LANGUAGE" calls the routine as often as there are records that are not deleted.
double Process(const Client& client, const Work& work) {
    const bool bare = work.variant.starts_with(L"bare-");
    const Routine routine(bare ? work.variant.substr(5) : work.variant);
    if (!bare) return CallForRecords(client, work, routine.holder());
    LONG living = 0;
    const Variant table(work.table);
    Check(client.functions()->DbfCount(table.get(), nullptr, &living));
    return CallBare(routine.holder(), living);
}

}  // namespace zu::bench
