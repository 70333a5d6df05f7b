// zubenchclient JOB TIMES RECORDS COUNT TABLE [VARIANT]: the functions called from C++, TIMES times; prints
// the job's result.
// "{}" in the table's name stands for the number of the turn, from 0.

#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <string>

#include "bench/client/Client.h"
#include "com/ComError.h"
#include "runner/ActivationContext.h"

namespace {

using namespace zu::bench;

const std::map<std::wstring, double (*)(const Client&, const Work&)> kJobs = {
    {L"lookup", Lookup}, {L"select", Select}, {L"process", Process},        {L"add", Add},
    {L"update", Update}, {L"delete", Delete}, {L"delete-many", DeleteMany}, {L"grid", OpenGrid},
};

std::uint32_t Number(const wchar_t* word) {
    return static_cast<std::uint32_t>(std::wcstoul(word, nullptr, 10));
}

std::wstring ForTurn(std::wstring table, std::uint32_t turn) {
    if (const auto place = table.find(L"{}"); place != std::wstring::npos)
        table.replace(place, 2, std::to_wstring(turn));
    return table;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const auto job = count > 5 ? kJobs.find(arguments[1]) : kJobs.end();
    if (job == kJobs.end()) {
        std::fprintf(stderr, "usage: zubenchclient JOB TIMES RECORDS COUNT TABLE [VARIANT]\n");
        return 64;
    }
    int code = 1;
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    try {
        const zu::runner::ActivationContext context;
        const Client client;
        double result = 0;
        for (std::uint32_t turn = 0; turn < Number(arguments[2]); ++turn) {
            const Work work{ForTurn(arguments[5], turn), Number(arguments[3]), Number(arguments[4]),
                            count > 6 ? arguments[6] : L""};
            result = job->second(client, work);
        }
        std::printf("%.0f\n", result);
        code = 0;
    } catch (const zu::com::ComError& failure) {
        std::fprintf(stderr, "%08lX %ls\n", static_cast<unsigned long>(failure.code()),
                     failure.description().c_str());
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
    }
    CoUninitialize();
    return code;
}
