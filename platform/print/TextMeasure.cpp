#include "platform/print/TextMeasure.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <array>
#include <unordered_map>

#include "platform/base/Text.h"

namespace kv {
namespace {

constexpr int kUnitsPerEm = 1000;
constexpr std::string_view kDots = "\xE2\x80\xA6";

/// The next code point of a UTF-8 text; moves `at` past it. Broken bytes count as themselves.
char32_t nextLetter(std::string_view text, std::size_t& at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(at);
    const std::size_t extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    if (extra == 0 || at + extra >= text.size()) return byte(at++);
    char32_t letter = lead & (0x3F >> extra);
    for (std::size_t i = 1; i <= extra; ++i) letter = (letter << 6) | (byte(at + i) & 0x3F);
    at += extra + 1;
    return letter;
}

}  // namespace

struct TextMeasure::Face {
    FontSpec font;  // at size 1
    QFontMetricsF metrics;
    std::array<float, 0x250> common;
    std::unordered_map<char32_t, float> others;

    explicit Face(const FontSpec& spec) : font(spec), metrics(fontOf(spec)) { common.fill(-1); }
    static QFont fontOf(const FontSpec& spec) {
        QFont f(QString::fromStdString(spec.family));
        f.setPixelSize(kUnitsPerEm);
        f.setBold(spec.bold);
        f.setItalic(spec.italic);
        f.setHintingPreference(QFont::PreferNoHinting);
        f.setKerning(false);
        return f;
    }
    float measured(char32_t letter) const {
        const QString text = QString::fromUcs4(&letter, 1);
        return static_cast<float>(metrics.horizontalAdvance(text) / kUnitsPerEm);
    }
};

TextMeasure::TextMeasure() {
    if (QGuiApplication::instance() == nullptr) {
        throw Error(kErrObjectMissing, "TextMeasure", "Reports need the application to be started first");
    }
}

TextMeasure::~TextMeasure() = default;

TextMeasure::Face& TextMeasure::face(const FontSpec& font) {
    FontSpec unit = font;
    unit.size_pt = 1;
    for (const auto& known : faces_) {
        if (known->font == unit) return *known;
    }
    faces_.push_back(std::make_unique<Face>(unit));
    return *faces_.back();
}

double TextMeasure::advance(Face& of, char32_t letter) {
    if (letter < of.common.size()) {
        float& known = of.common[letter];
        if (known < 0) known = of.measured(letter);
        return known;
    }
    const auto [known, fresh] = of.others.try_emplace(letter, 0.0F);
    if (fresh) known->second = of.measured(letter);
    return known->second;
}

double TextMeasure::width(const FontSpec& font, std::string_view text) {
    Face& of = face(font);
    double ems = 0;
    for (std::size_t at = 0; at < text.size();) ems += advance(of, nextLetter(text, at));
    return ems * font.size_pt * kMmPerPoint;
}

std::vector<std::string> TextMeasure::lines(const FontSpec& font, std::string_view text, double width_mm) {
    std::vector<std::string> out;
    for (const std::string& paragraph : split(replaceAll(text, "\r", ""), '\n')) {
        std::string line;
        for (std::string word : split(paragraph, ' ')) {
            const std::string longer = line.empty() ? word : line + " " + word;
            if (width(font, longer) <= width_mm) {
                line = longer;
                continue;
            }
            if (!line.empty()) out.push_back(std::exchange(line, {}));
            while (width(font, word) > width_mm && charCount(word) > 1) {
                std::size_t fits = 1;
                while (width(font, midChars(word, 0, fits + 1)) <= width_mm) ++fits;
                out.push_back(midChars(word, 0, fits));
                word = midChars(word, fits);
            }
            line = word;
        }
        out.push_back(line);
    }
    return out;
}

std::string TextMeasure::elided(const FontSpec& font, const std::string& text, double width_mm) {
    if (width(font, text) <= width_mm) return text;
    std::size_t low = 0, high = charCount(text);
    while (low < high) {
        const std::size_t middle = (low + high + 1) / 2;
        const bool fits = width(font, midChars(text, 0, middle) + std::string(kDots)) <= width_mm;
        (fits ? low : high) = fits ? middle : middle - 1;
    }
    return std::string(trimBlanks(midChars(text, 0, low))) + std::string(kDots);
}

}  // namespace kv
