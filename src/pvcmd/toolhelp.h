#pragma once
// The texts a built-in tool prints for "/?": its switches, as this interpreter
// understands them.

#include "pvcmd/tool.h"

namespace pvcmd {

extern const char* const kFindstrHelp;
extern const char* const kXcopyHelp;

// True when the arguments ask for the help text ("/?" among them).
bool asksForHelp(const ToolArgs& args);

} // namespace pvcmd
