#pragma once

#include "runner/NamedMembers.h"

namespace zu::runner {

class TextOutput;

/// Is told the engine's reports (Report) and its log (Trace) as they happen, and shows them.
class EngineListener final : public NamedMembers {
public:
    explicit EngineListener(TextOutput& output);
};

}  // namespace zu::runner
