#include "component/table/RoutineArguments.h"

#include <new>

#include "com/ComError.h"
#include "com/Variant.h"

namespace zu::component {

namespace {

LONG CountGiven(const ArgumentList& given) {
    LONG count = 0;
    for (const VARIANT* argument : given) {
        if (com::IsMissing(argument)) break;
        ++count;
    }
    return count;
}

}  // namespace

RoutineArguments::RoutineArguments(const ArgumentList& given) {
    const LONG count = CountGiven(given);
    SAFEARRAYBOUND bounds{};
    bounds.cElements = count ? static_cast<ULONG>(count) : 1;
    bounds.lLbound = count ? 0 : -1;
    array_ = SafeArrayCreate(VT_VARIANT, 1, &bounds);
    if (!array_) throw std::bad_alloc();
    try {
        for (LONG index = 0; index < count; ++index) {
            com::Variant copy(*given[static_cast<std::size_t>(index)]);
            com::Check(SafeArrayPutElement(array_, &index, copy.address()));
        }
    } catch (...) {
        SafeArrayDestroy(array_);
        throw;
    }
}

RoutineArguments::~RoutineArguments() {
    SafeArrayDestroy(array_);
}

}  // namespace zu::component
