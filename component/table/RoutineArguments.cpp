#include "component/table/RoutineArguments.h"

#include <vector>

namespace zu::component {

com::SafeArray RoutineArguments(const ArgumentList& given) {
    std::vector<com::Variant> copies;
    for (const VARIANT* argument : given) {
        if (com::IsMissing(argument)) break;
        copies.emplace_back(*argument);
    }
    return copies.empty() ? com::SafeArray::NoArguments() : com::SafeArray::Of(copies);
}

}  // namespace zu::component
