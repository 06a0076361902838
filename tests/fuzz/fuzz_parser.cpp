// Any text: the parser takes it or raises a SqlError; what it takes and the engine does not refuse prints to a text
// that prints the same again.

#include <cstdint>

#include "platform/embedded/Parser.h"
#include "platform/embedded/Printer.h"
#include "platform/embedded/Refusals.h"
#include "platform/embedded/SqlError.h"
#include "tests/fuzz/Fuzz.h"

constexpr int kTooDeep = 191;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kv::tsql;
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (const ScriptBatch& batch : splitScript(text)) {
        std::string printed;
        try {
            const Batch parsed = parseBatch(batch.text);
            refuseUnsupported(parsed.statements);
            printed = print(parsed.statements);
        } catch (const SqlError& error) {
            kv::fuzz::hold(error.number > 0 && !error.text.empty(), "an error has a number and a text", batch.text);
            continue;
        }
        try {
            const std::string again = print(parseBatch(printed).statements);
            kv::fuzz::hold(again == printed, "what is printed parses to the same tree",
                           printed + "\n--- then\n" + again);
        } catch (const SqlError& error) {
            if (error.number == kTooDeep) continue;  // the parentheses that printing adds count as depth
            kv::fuzz::hold(false, "what is printed parses", printed + "\n--- " + error.text);
        }
    }
    return 0;
}
