#include "compare/compareoptions.h"

#include "compare/scripttext.h"
#include "settings/settings.h"
#include "platform/textutil.h"

#include <cctype>

namespace pv {

CompareOptions readCompareOptions(const Settings& settings) {
    constexpr std::string_view section = "COMPARECONTROL";
    auto on = [&](std::string_view key) {
        return IniBool(settings.GetIniValue(section, key, "False"));
    };
    CompareOptions o;
    o.fcLb = wellFormedFcSwitch("FC_LB", settings.GetIniValue(section, "FC_LB", "/lb100"));
    o.fcNnnn = wellFormedFcSwitch("FC_NNNN", settings.GetIniValue(section, "FC_NNNN", "/2"));
    o.fcA = on("FC_A");
    o.fcB = on("FC_B");
    o.fcC = on("FC_C");
    o.fcL = on("FC_L");
    o.fcN = on("FC_N");
    o.fcT = on("FC_T");
    o.fcU = on("FC_U");
    o.fcW = on("FC_W");
    o.listDateTime = on("LIST_DateTime");
    o.listLength = on("LIST_Length");
    o.listContents = on("LIST_Contents");
    o.modifyWindow = on("LIST_Time2s") ? 2 : 0;
    o.ignoreHourShift = on("LIST_HourShift");
    o.editor = settings.GetIniValue("APPLICATION", "EDITOR", "Write.exe");
    return o;
}

namespace {

std::string onOffSwitches(const CompareOptions& o) {
    std::string s;
    const std::pair<bool, const char*> table[] = {
        {o.fcA, "/a "}, {o.fcB, "/b "}, {o.fcC, "/c "}, {o.fcL, "/l "},
        {o.fcN, "/n "}, {o.fcT, "/t "}, {o.fcU, "/u "}, {o.fcW, "/w "},
    };
    for (const auto& [on, text] : table)
        if (on)
            s += text;
    return s;
}

void addFreeSwitch(std::string& s, std::string_view value) {
    if (!value.empty()) {
        s += value;
        s += ' ';
    }
}

} // namespace

std::string directoryFcSwitches(const CompareOptions& o) {
    std::string s;
    addFreeSwitch(s, o.fcLb);
    addFreeSwitch(s, o.fcNnnn);
    return s + onOffSwitches(o);
}

std::string singleFcSwitches(const CompareOptions& o) {
    std::string s;
    addFreeSwitch(s, trimBlanks(o.fcLb));
    addFreeSwitch(s, trimBlanks(o.fcNnnn));
    return s + onOffSwitches(o);
}

std::string scriptEditor(std::string_view editorSetting) {
    std::string upper(editorSetting);
    for (char& c : upper)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (upper == "INTERNAL" || editorSetting.find(' ') != std::string_view::npos)
        return "Write.exe";
    return std::string(editorSetting);
}

} // namespace pv
