#include "platform/print/Document.h"

#include <algorithm>

#include "platform/base/Text.h"

namespace kv {
namespace {

std::string mm(double value) { return Format(value, "0.0"); }

std::string place(const Document& document, std::int16_t band, double x, double y) {
    std::string line = document.bands[static_cast<std::size_t>(band)];
    line.resize(std::max<std::size_t>(line.size(), 18), ' ');
    const std::string left = mm(x), top = mm(y);
    line += std::string(left.size() < 7 ? 7 - left.size() : 0, ' ') + left;
    line += std::string(top.size() < 7 ? 7 - top.size() : 0, ' ') + top + "  ";
    return line;
}

struct Line {
    float y, x;
    std::string text;
};

}  // namespace

int Document::fontIndex(const FontSpec& font) {
    const auto known = std::find(fonts.begin(), fonts.end(), font);
    if (known != fonts.end()) return static_cast<int>(known - fonts.begin());
    fonts.push_back(font);
    return static_cast<int>(fonts.size()) - 1;
}

std::int16_t Document::bandIndex(std::string_view band) {
    const auto known = std::find(bands.begin(), bands.end(), band);
    if (known != bands.end()) return static_cast<std::int16_t>(known - bands.begin());
    bands.emplace_back(band);
    return static_cast<std::int16_t>(bands.size() - 1);
}

std::vector<std::vector<std::size_t>> textLines(const PaperPage& page) {
    // texts of one line share a baseline, not the top of their boxes
    constexpr float kSameLine_mm = 1.2F;
    const auto middle = [&](std::size_t run) { return page.runs[run].y + page.runs[run].height / 2; };
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < page.runs.size(); ++i) {
        if (!page.runs[i].hidden) order.push_back(i);
    }
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return middle(a) < middle(b); });
    std::vector<std::vector<std::size_t>> lines;
    for (const std::size_t run : order) {
        if (lines.empty() || middle(run) - middle(lines.back().front()) > kSameLine_mm) lines.emplace_back();
        lines.back().push_back(run);
    }
    for (auto& line : lines) {
        std::stable_sort(line.begin(), line.end(),
                         [&](std::size_t a, std::size_t b) { return page.runs[a].x < page.runs[b].x; });
    }
    return lines;
}

std::string joinedText(const PaperPage& page, const std::vector<std::vector<std::size_t>>& lines) {
    std::string out;
    for (const auto& line : lines) {
        if (!out.empty()) out += "\n";
        for (std::size_t i = 0; i < line.size(); ++i) out += (i > 0 ? "\t" : "") + page.runs[line[i]].text;
    }
    return out;
}

std::string pageList(const Document& document) {
    std::string out = "paper " + mm(document.width) + " x " + mm(document.height) + "\n";
    for (std::size_t p = 0; p < document.pages.size(); ++p) {
        const PaperPage& page = document.pages[p];
        out += "page " + std::to_string(p + 1) + "\n";
        std::vector<Line> lines;
        for (const PageShape& s : page.shapes) {
            const std::string size = mm(s.width) + " x " + Format(s.height, "0.00");
            lines.push_back({s.y, s.x, place(document, s.band, s.x, s.y) + "[" + size + "]"});
        }
        for (const PageImage& s : page.pictures) {
            lines.push_back({s.y, s.x, place(document, s.band, s.x, s.y) + "[picture " + s.path + "]"});
        }
        for (const TextRun& r : page.runs) {
            if (r.hidden) continue;
            // a right-aligned text is known by its right edge, a centred one by its middle
            const bool right = r.align == TextAlign::Right, centre = r.align == TextAlign::Center;
            const float x = r.x + (right ? r.width : centre ? r.width / 2 : 0);
            const char* mark = right ? "> " : centre ? "^ " : "";
            lines.push_back({r.y, r.x, place(document, r.band, x, r.y) + mark + r.text});
        }
        std::stable_sort(lines.begin(), lines.end(),
                         [](const Line& a, const Line& b) { return a.y < b.y || (a.y == b.y && a.x < b.x); });
        for (const Line& line : lines) out += line.text + "\n";
    }
    return out;
}

}  // namespace kv
