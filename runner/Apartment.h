#pragma once

#include <objbase.h>

#include "com/ComError.h"

namespace zu::runner {

/// The thread's apartment, for as long as any object may live.
class Apartment {
public:
    Apartment() { com::Check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

}  // namespace zu::runner
