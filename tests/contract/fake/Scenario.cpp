#include "tests/contract/fake/Scenario.h"

#include "tests/contract/fake/PerThread.h"

namespace zu::fake {

Scenario& Scene() {
    return OfThisThread<Scenario>();
}

}  // namespace zu::fake
