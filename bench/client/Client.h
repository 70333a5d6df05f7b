#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "com/ComPtr.h"
#include "com/SafeArray.h"
#include "com/Variant.h"
#include "idl/ZuDBFFunctions.h"
#include "idl/Zuengine.h"

namespace zu::bench {

/// What a job works on.
struct Work {
    std::wstring table;     ///< "folder>name" or the path of a table file
    std::uint32_t records;  ///< records in it, deleted ones included
    std::uint32_t count;    ///< how often a single operation is done
    std::wstring variant;   ///< which form of the job
};

/// The functions and the engine, called through their interfaces as a C++ program does. The DLLs are those
/// beside the program.
class Client {
public:
    Client();

    _Functions* functions() const noexcept { return functions_.get(); }
    ZuProject* project() const noexcept { return project_.get(); }
    /// Throws std::runtime_error with the engine's last error.
    [[noreturn]] void Fail(const std::string& job) const;

private:
    com::ComPtr<_Functions> functions_;
    com::ComPtr<ZuProject> project_;
};

// The jobs. Each does its work once and answers a number that its peers must reach too.

double Lookup(const Client& client, const Work& work);
double Select(const Client& client, const Work& work);
double Process(const Client& client, const Work& work);
double Add(const Client& client, const Work& work);
double Update(const Client& client, const Work& work);
double Delete(const Client& client, const Work& work);
double DeleteMany(const Client& client, const Work& work);
double OpenGrid(const Client& client, const Work& work);

}  // namespace zu::bench
