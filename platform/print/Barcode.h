#pragma once
// Barcodes drawn by ourselves: Code 39 and Code 128.

#include <string>
#include <string_view>
#include <vector>

namespace kv {

enum class BarcodeKind { Code39, Code128 };

/// A symbol as widths in modules: bar, space, bar, ... beginning and ending with a bar. Quiet zones are the caller's.
struct Barcode {
    std::vector<int> widths;
    int modules() const;
};

/// Raises Error 5 for a character that the kind cannot carry (Code 39: capitals, digits, "-. $/+%"; Code 128: ASCII).
Barcode encodeBarcode(BarcodeKind kind, std::string_view text);

}  // namespace kv
