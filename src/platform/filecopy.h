#pragma once
// Copies one file so that the destination is never seen half-written: the bytes
// go to a temporary file in the destination's directory, which then takes the
// destination's place. The copy keeps the source's last-write time.

#include <string>

namespace pv {

struct FileCopyResult {
    bool ok = false;
    int error = 0; // errno of the failing step
};

// One copier serves a whole run, so that the names of its temporary files share
// one unique part and differ by a counter.
class FileCopier {
  public:
    // How the copier works; each falls back by itself where the file system
    // refuses, and can be switched off to take the fallback from the start.
    struct Methods {
        // A nameless temporary file (O_TMPFILE) that is linked in when complete;
        // otherwise a named one in the destination's directory.
        bool anonymousTemp = true;
        // The kernel copies the bytes (copy_file_range); otherwise read and write.
        bool kernelCopy = true;
    };

    FileCopier() : FileCopier(Methods{}) {}
    explicit FileCopier(Methods methods);

    // `keepMode`: the copy gets the source's permission bits as they are;
    // otherwise the owner may always write it (the system tool clears the
    // read-only attribute). `verify` reads the copy back and compares.
    FileCopyResult copy(const std::string& source, const std::string& destination, bool keepMode,
                        bool verify);

    // What the copies so far used, for tests: whether any went through a named
    // temporary file or through read and write.
    bool usedNamedTemp() const { return m_usedNamedTemp; }
    bool usedReadWrite() const { return m_usedReadWrite; }

  private:
    int openTemp(const std::string& dir, std::string& name, bool& anonymous);
    std::string nextTempName(const std::string& dir);
    bool copyBytes(int in, int out, long long size, int& error);

    Methods m_methods;
    std::string m_runTag;
    unsigned long m_counter = 0;
    bool m_usedNamedTemp = false;
    bool m_usedReadWrite = false;
};

// The system's plain file copy: replaces an existing destination unless it is
// read-only (EACCES), keeps the source's permission bits and last-write time.
FileCopyResult copyFileReplacing(const std::string& source, const std::string& destination);

} // namespace pv
