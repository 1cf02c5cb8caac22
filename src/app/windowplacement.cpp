#include "app/windowplacement.h"

#include <charconv>
#include <string_view>

namespace pv {

namespace {
constexpr std::string_view kSection = "MAINWINDOW";
constexpr std::string_view kKey = "PLACEMENT";
constexpr int kMinWidth = 200;
constexpr int kMinHeight = 150;
} // namespace

std::optional<WindowPlacement> readWindowPlacement(const Settings& settings) {
    const std::string text = settings.read(kSection, kKey);
    int values[5];
    const char* p = text.data();
    const char* end = text.data() + text.size();
    for (int i = 0; i < 5; ++i) {
        auto [next, ec] = std::from_chars(p, end, values[i]);
        if (ec != std::errc())
            return std::nullopt;
        p = next;
        if (i < 4) {
            if (p == end || *p != ',')
                return std::nullopt;
            ++p;
        }
    }
    if (p != end || values[2] < kMinWidth || values[3] < kMinHeight ||
        (values[4] != 0 && values[4] != 1))
        return std::nullopt;
    return WindowPlacement{values[0], values[1], values[2], values[3], values[4] == 1};
}

void writeWindowPlacement(const Settings& settings, const WindowPlacement& w) {
    settings.write(kSection, kKey,
                   std::to_string(w.x) + "," + std::to_string(w.y) + "," + std::to_string(w.width) +
                       "," + std::to_string(w.height) + "," + (w.maximized ? "1" : "0"));
}

} // namespace pv
