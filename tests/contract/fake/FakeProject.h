#pragma once

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledProject.h"

namespace zu::fake {

class FakeProject final : public FakeObject<UncalledProject> {
public:
    FakeProject() : FakeObject("project") {}

    STDMETHODIMP Engine(IDispatch** result) override;
};

}  // namespace zu::fake
