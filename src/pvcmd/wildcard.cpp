#include "pvcmd/wildcard.h"

#include "platform/wildcard.h"

namespace pvcmd {

Wildcard::Wildcard(std::string pattern) : m_pattern(std::move(pattern)) {}

bool Wildcard::matches(std::string_view name) const { return pv::wildcardMatch(name, m_pattern); }

bool Wildcard::hasWildcard(std::string_view text) { return pv::hasWildcard(text); }

} // namespace pvcmd
