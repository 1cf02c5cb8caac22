#pragma once
// The six panels of the compare window's status line: left file date and length,
// right file date and length, which side was clicked, and the file name.

#include <array>
#include <functional>
#include <string>
#include <string_view>

namespace pv {

// An attribute text split at its length part: `first` is the text before the
// first "- " (ending with the blank before "-"), `second` the text from the
// blank after "-" on. `hasLength` is false when there is no "- ".
struct AttributeSplit {
    bool hasLength = false;
    std::string first;
    std::string second;
};
AttributeSplit splitAttributeText(std::string_view text);

class StatusLine {
  public:
    static constexpr int kPanels = 6;
    using Panels = std::array<std::string, kPanels>;

    // Panels 1 to 6 are indexes 0 to 5.
    const Panels& panels() const { return m_panels; }

    // With text1 not empty: panels 1 to 4 show text1 to text4. Otherwise the side
    // named by label ("file one:" is the left, anything else the right) takes text4
    // as its attribute text, or, when text4 is empty, what `attributesOfFile`
    // gives; an empty attribute text leaves its panels as they were. Panels 5 and
    // 6 show label and fileName. attrOne and attrTwo are the window's remembered
    // texts, shared with the directory compare.
    void Set_StatusBar1(const std::string& text1, const std::string& text2,
                        const std::string& text3, const std::string& text4,
                        const std::string& label, const std::string& fileName, std::string& attrOne,
                        std::string& attrTwo, const std::function<std::string()>& attributesOfFile);

  private:
    void showAttribute(const std::string& attr, int firstPanel);

    Panels m_panels;
};

} // namespace pv
