#include "tests/contract/fake/FakeProject.h"

#include "tests/contract/fake/FakeEngine.h"

namespace zu::fake {

STDMETHODIMP FakeProject::Engine(IDispatch** result) {
    return Answer("ZuProject.Engine", "", result,
                  []() -> IDispatch* { return static_cast<ZuEngineCore*>(Make<FakeEngine>().detach()); });
}

}  // namespace zu::fake
