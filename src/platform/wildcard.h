#pragma once
// File-name wildcards as the system's lists and tools read them: "*" any run of
// characters, "?" one character, letter case ignored; "*.*" matches every name and
// a pattern ending in ".*" also matches a name without an extension, and one ending
// in "." matches only names without one ("*." lists the extensionless files).

#include <string_view>

namespace pv {

bool wildcardMatch(std::string_view name, std::string_view pattern);

bool hasWildcard(std::string_view text);

} // namespace pv
