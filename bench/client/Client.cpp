#include "bench/client/Client.h"

#include <stdexcept>

#include "com/Bstr.h"
#include "runner/EngineLink.h"

namespace zu::bench {

Client::Client()
    : functions_(runner::CreateByName(L"ZuDBFFunctions.Functions").as<_Functions>()),
      project_(runner::CreateByName(L"Zuengine.Zuproject").as<ZuProject>()) {}

void Client::Fail(const std::string& job) const {
    com::Bstr reason;
    project_->get_LastError(reason.put());
    std::string text = job + " failed: ";
    for (const wchar_t character : reason.view())
        text += character < 0x80 ? static_cast<char>(character) : '?';
    throw std::runtime_error(text);
}

}  // namespace zu::bench
