#include "tests/contract/fake/Scenario.h"

namespace zu::fake {

Scenario& Scene() {
    thread_local Scenario scenario;
    return scenario;
}

}  // namespace zu::fake
