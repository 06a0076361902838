#pragma once
// BandReader: bands and what stands in them, columns and groups, read from a template's written tree.

#include "platform/print/StyleReader.h"

namespace kv {

class BandReader {
public:
    BandReader(const std::vector<PrintStyle>& styles, std::vector<Mistake>& mistakes)
        : styles_(styles), mistakes_(mistakes) {}

    /// A missing band stays without `given`. `what` names it in messages.
    Band band(const TextNode* node, const std::string& what);
    ReportColumn column(const TextNode& node);
    ReportGroup group(const TextNode& node);
    Detail detail(const TextNode* node);
    int style(TableReader& in, std::string_view key, std::string_view standard);

private:
    void items(TableReader& in, Band& band, std::string_view key, BandItem::Kind kind);
    BandItem item(const TextNode& node, BandItem::Kind kind);
    void placeOf(TableReader& in, BandItem& item);
    void textOf(TableReader& in, BandItem& item);
    void subreportOf(TableReader& in, BandItem& item);
    std::vector<std::pair<std::string, Expression>> named(TableReader& in, std::string_view key);
    std::vector<Condition> conditions(TableReader& in);
    Drill drill(TableReader& in);
    Expression totalOf(TableReader& in, const ReportColumn& column);
    void checkLines(Band& band);

    const std::vector<PrintStyle>& styles_;
    std::vector<Mistake>& mistakes_;
};

}  // namespace kv
