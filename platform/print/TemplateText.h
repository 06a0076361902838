#pragma once
// TemplateText: a report template as it was written, with what it includes; and the mistakes found in it.

#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Error.h"
#include "platform/base/TomlText.h"

namespace kv {

struct Mistake {
    TextPlace place;
    std::string text;
    /// "TrialBalance.rpt:12: there is no field 'Debt'"
    std::string line() const;
};

/// By file and line, each once.
void sortMistakes(std::vector<Mistake>& mistakes);

/// All mistakes of a template. The description lists them, one a line.
class TemplateError : public Error {
public:
    explicit TemplateError(std::vector<Mistake> found);
    std::vector<Mistake> mistakes;
};

/// Where a file that a template names is: beside the template, else in the folder Reports next to the template's own,
/// so that a copy of a common template works unchanged in a client's folder. It need not exist.
std::string pathFromTemplate(const std::string& folder, const std::string& name);

/// Reads a template file with what it includes. `include = ["common/page.toml"]` names files as pathFromTemplate finds
/// them; tables are merged key by key, anything else in the including file replaces what the include brought.
/// Raises 53 when the file itself is missing, TemplateError for what is wrong in the text.
TextNode readTemplateFile(const std::string& path);
/// The same from a text, with the folder against which includes are looked up.
TextNode readTemplateText(std::string_view text, const std::string& fileName, const std::string& folder);

}  // namespace kv
