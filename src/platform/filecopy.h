#pragma once
// Copies one file so that the destination is never seen half-written: the bytes
// go to a temporary file in the destination's directory, which then replaces the
// destination by rename. The copy keeps the source's last-write time.

#include <string>

namespace pv {

struct FileCopyResult {
    bool ok = false;
    int error = 0; // errno of the failing step
};

// `keepMode`: the copy gets the source's permission bits as they are; otherwise
// the owner may always write it (the system tool clears the read-only attribute).
FileCopyResult copyFileAtomic(const std::string& source, const std::string& destination,
                              bool keepMode, bool verify);

// The system's plain file copy: replaces an existing destination unless it is
// read-only (EACCES), keeps the source's permission bits and last-write time.
FileCopyResult copyFileReplacing(const std::string& source, const std::string& destination);

} // namespace pv
