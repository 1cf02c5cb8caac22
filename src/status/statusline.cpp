#include "status/statusline.h"

namespace pv {

AttributeSplit splitAttributeText(std::string_view text) {
    AttributeSplit s;
    size_t p = text.find("- ");
    if (p == std::string_view::npos) {
        s.first = text;
        return s;
    }
    s.hasLength = true;
    s.first = text.substr(0, p);
    s.second = text.substr(p + 1);
    return s;
}

void StatusLine::showAttribute(const std::string& attr, int firstPanel) {
    if (attr.empty())
        return;
    AttributeSplit s = splitAttributeText(attr);
    m_panels[firstPanel] = s.first;
    m_panels[firstPanel + 1] = s.hasLength ? s.second : std::string();
}

void StatusLine::Set_StatusBar1(const std::string& text1, const std::string& text2,
                                const std::string& text3, const std::string& text4,
                                const std::string& label, const std::string& fileName,
                                std::string& attrOne, std::string& attrTwo,
                                const std::function<std::string()>& attributesOfFile) {
    if (!text1.empty()) {
        m_panels[0] = text1;
        m_panels[1] = text2;
        m_panels[2] = text3;
        m_panels[3] = text4;
    } else {
        std::string& attr = label == "file one:" ? attrOne : attrTwo;
        attr = !text4.empty() ? text4 : (attributesOfFile ? attributesOfFile() : std::string());
        showAttribute(attrOne, 0);
        showAttribute(attrTwo, 2);
    }
    m_panels[4] = label;
    m_panels[5] = fileName;
}

} // namespace pv
