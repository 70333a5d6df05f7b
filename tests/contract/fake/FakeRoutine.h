#pragma once

#include "tests/contract/fake/FakeObject.h"

namespace zu::fake {

/// Stands for a routine of the script; only the engine looks into it.
struct RoutineInterface : IDispatch {
    using Interface = IDispatch;
};

class FakeRoutine final : public FakeObject<RoutineInterface> {
public:
    FakeRoutine() : FakeObject("routine") {}
};

}  // namespace zu::fake
