#pragma once
// fc reads its files through the platform's line reader, shared with the
// side-by-side view so that both see the same lines.

#include "platform/linereader.h"

namespace pvcmd {
using pv::LineReader;
} // namespace pvcmd
