#include "pvcmd/tool.h"

#include <cctype>

namespace pvcmd {

namespace {

struct ToolEntry {
    const char* name;
    ToolMain main;
};

// The built-in tools. Each is reached by its name in any letter case, with or
// without ".exe", the way a script names the system's tools.
const ToolEntry kTools[] = {
    {"fc", &fcMain},
    {"findstr", &findstrMain},
    {"dir", &dirMain},
    {"xcopy", &xcopyMain},
};

} // namespace

ToolMain findTool(const std::string& name) {
    std::string key;
    for (char c : name)
        key += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (key.size() > 4 && key.compare(key.size() - 4, 4, ".exe") == 0)
        key.resize(key.size() - 4);
    for (const ToolEntry& tool : kTools)
        if (key == tool.name)
            return tool.main;
    return nullptr;
}

} // namespace pvcmd
