#pragma once
// Document: laid-out pages. Everything is in millimetres from the paper's upper left corner, ready to be drawn
// anywhere.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/print/Template.h"

namespace kv {

struct FontSpec {
    std::string family = "Noto Sans";
    double size_pt = 8.5;
    bool bold = false;
    bool italic = false;
    bool operator==(const FontSpec&) const = default;
};

struct TextRun {
    float x = 0, y = 0, width = 0,
          height = 0;  ///< the box; the text stands in its middle, by `align` from side to side
    std::string text;
    int font = 0;
    int color = 0;
    TextAlign align = TextAlign::Left;
    std::int16_t band = 0;
    bool hidden = false;
};

/// A filled or outlined rectangle; a line is a filled one.
struct PageShape {
    float x = 0, y = 0, width = 0, height = 0;
    int fill = kNoColor;
    int stroke = kNoColor;
    float weight = 0;
    std::int16_t band = 0;
};

struct PageImage {
    float x = 0, y = 0, width = 0, height = 0;
    std::string path;
    std::int16_t band = 0;
};

/// A place that leads to a screen.
struct PageLink {
    float x = 0, y = 0, width = 0, height = 0;
    std::string screen;
    std::string key;
};

struct PaperPage {
    std::vector<PageShape> shapes;
    std::vector<PageImage> pictures;
    std::vector<TextRun> runs;
    std::vector<PageLink> links;
};

/// One line of the group tree.
struct TreeEntry {
    int level = 0;
    std::string label;
    int page = 0;  ///< from 0
    float y = 0;
};

struct Document {
    std::string title;
    double width = 210;
    double height = 297;
    std::vector<FontSpec> fonts;
    std::vector<std::string> bands;
    std::vector<PaperPage> pages;
    std::vector<TreeEntry> tree;

    int fontIndex(const FontSpec& font);
    std::int16_t bandIndex(std::string_view band);
};

/// The visible texts of a page as lines from top to bottom, each from left to right: indices into its runs.
std::vector<std::vector<std::size_t>> textLines(const PaperPage& page);
/// Texts of some runs of a page, lines apart by line ends, cells by tabs.
std::string joinedText(const PaperPage& page, const std::vector<std::vector<std::size_t>>& lines);

/// The pages as a text for comparing: "page 1", then one line for each thing: band, x, y, and its text or size.
std::string pageList(const Document& document);

}  // namespace kv
