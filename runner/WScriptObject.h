#pragma once

#include "runner/NamedMembers.h"

namespace zu::runner {

class Session;

/// The object that scripts written for cscript expect under the name WScript.
class WScriptObject final : public NamedMembers {
public:
    explicit WScriptObject(Session& session);

private:
    void AddIdentity(const Session& session);
    void AddStreams(Session& session);
    void AddObjects(Session& session);
    void AddCourse(Session& session);
};

}  // namespace zu::runner
