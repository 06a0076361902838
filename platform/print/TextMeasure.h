#pragma once
// TextMeasure: widths of texts in millimetres, the same on every device: unhinted outlines, no kerning, cached by
// character.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/print/Document.h"

namespace kv {

class TextMeasure {
public:
    /// Raises 91 when the program has no toolkit application yet: fonts are the toolkit's.
    TextMeasure();
    TextMeasure(const TextMeasure&) = delete;
    TextMeasure& operator=(const TextMeasure&) = delete;
    ~TextMeasure();

    double width(const FontSpec& font, std::string_view text);
    /// Lines of a text no wider than `width_mm`, broken at blanks (inside a word only when it is wider by itself).
    std::vector<std::string> lines(const FontSpec& font, std::string_view text, double width_mm);
    /// The text cut with "..." so that it fits.
    std::string elided(const FontSpec& font, const std::string& text, double width_mm);

private:
    struct Face;
    Face& face(const FontSpec& font);
    double advance(Face& face, char32_t letter);
    std::vector<std::unique_ptr<Face>> faces_;
};

constexpr double kMmPerPoint = 25.4 / 72;
/// Height of a line of text.
constexpr double lineHeight_mm(double size_pt) { return size_pt * kMmPerPoint * 1.32; }

}  // namespace kv
