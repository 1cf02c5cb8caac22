#include "app/programpaths.h"

namespace pv {

ProgramPaths ProgramPaths::inDirectory(const std::string& directory) {
    ProgramPaths p;
    p.programDirectory = directory;
    std::string prefix = directory == "/" ? "/" : directory + "/";
    p.settingsPath = prefix + "Pairview.ini";
    p.resultsPath = prefix + "Pairview.txt";
    p.findTextPath = prefix + "PairviewFIND.txt";
    p.findFilePath = prefix + "PairviewFINDFILE.txt";
    p.xcopyPath = prefix + "Xcopy_FILE.CMD";
    p.capturePath = prefix + "CaptureFile.txt";
    return p;
}

void ProgramGlobals::setClicked(ClickedControl control) {
    clickedDir1 = control == ClickedControl::Dir1;
    clickedFileOne = control == ClickedControl::FileOne;
    clickedDir2 = control == ClickedControl::Dir2;
    clickedFileTwo = control == ClickedControl::FileTwo;
}

ProgramGlobals& globals() {
    static ProgramGlobals g;
    return g;
}

Settings programSettings() { return Settings(globals().paths.settingsPath); }

std::string perWindowFileName(const std::string& path, const std::string& tag) {
    std::size_t nameStart = path.rfind('/');
    nameStart = nameStart == std::string::npos ? 0 : nameStart + 1;
    std::size_t dot = path.rfind('.');
    if (dot == std::string::npos || dot < nameStart)
        return path + tag;
    return path.substr(0, dot) + tag + path.substr(dot);
}

} // namespace pv
