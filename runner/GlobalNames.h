#pragma once

#include "runner/NamedMembers.h"

namespace zu::runner {

class Session;

/// The runner's own names that scripts use without a prefix: Echo, Args, Quit, Engine, Functions.
class GlobalNames final : public NamedMembers {
public:
    explicit GlobalNames(Session& session);
};

}  // namespace zu::runner
