#pragma once
// The settings file: an INI file read and written one key at a time, with no
// copy kept in memory. Every call goes to the file named by path() at that moment.

#include <string>
#include <string_view>

namespace pv {

class Settings {
  public:
    explicit Settings(std::string path = {}) : m_path(std::move(path)) {}

    const std::string& path() const { return m_path; }
    void setPath(std::string path) { m_path = std::move(path); }

    // The raw private-profile read: at most 254 characters of the value, blanks
    // trimmed; empty when the file, section or key is missing. A file that exists
    // but cannot be read, or is not text the reader understands, reads as empty,
    // is reported once ("Cannot read the settings file PATH: REASON. Settings will
    // not be saved in this run.") and is never written in this run. A file with a
    // UTF-16 or UTF-8 byte-order mark is read and written in its own encoding.
    std::string read(std::string_view section, std::string_view key) const;

    // The value, or `def` unchanged when the trimmed value is empty.
    std::string GetIniValue(std::string_view section, std::string_view key,
                            std::string_view def) const;
    // The value, or `def` when the trimmed value is shorter than two characters.
    std::string GetIniValueMin2(std::string_view section, std::string_view key,
                                std::string_view def) const;

    // Writes one value (untrimmed; an empty value leaves "KEY="). Under an advisory
    // lock on NAME.lock the file is read, changed and replaced through a temporary
    // file and a rename; the first write of a run to a file also removes temporary
    // files that an interrupted write left. Returns false when the write failed:
    // the first failure of a run is shown in a message naming the file and the
    // reason, later ones go to the error output. A section or key name that
    // could add lines or sections to the file (see ini::nameRefusal) is such a
    // failure: nothing is written.
    bool write(std::string_view section, std::string_view key, std::string_view value) const;

    // Starts a new run for the one-message rule of failed writes (the program
    // starts with one).
    static void startRun();

  private:
    std::string m_path;
};

// A switch is on when its text equals "True" in any letter case.
bool IniBool(std::string_view text);
// The yes/no reader: "NO" in any case is no, anything else yes.
bool IniYes(std::string_view text);
// The switch text of a Boolean: "True" or "False".
inline const char* switchText(bool on) {
    return on ? "True" : "False";
}

} // namespace pv
