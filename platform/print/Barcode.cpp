#include "platform/print/Barcode.h"

#include <array>
#include <numeric>

#include "platform/base/Error.h"

namespace kv {
namespace {

constexpr std::string_view kCode39Letters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%*";

/// Nine elements a letter, 1 narrow and 2 wide, bar first.
constexpr std::array<std::string_view, 44> kCode39 = {
    "111221211", "211211112", "112211112", "212211111", "111221112", "211221111", "112221111", "111211212", "211211211",
    "112211211", "211112112", "112112112", "212112111", "111122112", "211122111", "112122111", "111112212", "211112211",
    "112112211", "111122211", "211111122", "112111122", "212111121", "111121122", "211121121", "112121121", "111111222",
    "211111221", "112111221", "111121221", "221111112", "122111112", "222111111", "121121112", "221121111", "122121111",
    "121111212", "221111211", "122111211", "121212111", "121211121", "121112121", "111212121", "121121211"};

/// Six elements a value 0 to 105; the stop symbol has seven.
constexpr std::array<std::string_view, 107> kCode128 = {
    "212222", "222122", "222221", "121223", "121322", "131222", "122213", "122312", "132212", "221213", "221312",
    "231212", "112232", "122132", "122231", "113222", "123122", "123221", "223211", "221132", "221231", "213212",
    "223112", "312131", "311222", "321122", "321221", "312212", "322112", "322211", "212123", "212321", "232121",
    "111323", "131123", "131321", "112313", "132113", "132311", "211313", "231113", "231311", "112133", "112331",
    "132131", "113123", "113321", "133121", "313121", "211331", "231131", "213113", "213311", "213131", "311123",
    "311321", "331121", "312113", "312311", "332111", "314111", "221411", "431111", "111224", "111422", "121124",
    "121421", "141122", "141221", "112214", "112412", "122114", "122411", "142112", "142211", "241211", "221114",
    "413111", "241112", "134111", "111242", "121142", "121241", "114212", "124112", "124211", "411212", "421112",
    "421211", "212141", "214121", "412121", "111143", "111341", "131141", "114113", "114311", "411113", "411311",
    "113141", "114131", "311141", "411131", "211412", "211214", "211232", "2331112"};
constexpr int kStartB = 104, kStartC = 105, kSwitchToC = 99, kSwitchToB = 100, kStop = 106;

void append(Barcode& code, std::string_view widths) {
    for (const char w : widths) code.widths.push_back(w - '0');
}

[[noreturn]] void refuse(char c) {
    throw Error(5, "Barcode", std::string("The barcode cannot carry the character '") + c + "'");
}

Barcode code39(std::string_view text) {
    Barcode code;
    const auto letter = [&](char c) {
        const std::size_t at = kCode39Letters.find(c);
        if (at == std::string_view::npos) refuse(c);
        if (!code.widths.empty()) code.widths.push_back(1);
        append(code, kCode39[at]);
    };
    letter('*');
    for (const char c : text) {
        if (c == '*') refuse(c);
        letter(c);
    }
    letter('*');
    return code;
}

std::size_t digitRun(std::string_view text, std::size_t from) {
    std::size_t n = 0;
    while (from + n < text.size() && text[from + n] >= '0' && text[from + n] <= '9') ++n;
    return n;
}

/// Set C carries two digits a symbol: worth a switch from four digits on.
std::vector<int> code128Values(std::string_view text) {
    std::vector<int> values;
    bool pairs = digitRun(text, 0) >= 4;
    values.push_back(pairs ? kStartC : kStartB);
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t run = digitRun(text, i);
        if (pairs && run < 2) {
            values.push_back(kSwitchToB);
            pairs = false;
        } else if (!pairs && run >= 4 && run % 2 == 0) {
            values.push_back(kSwitchToC);
            pairs = true;
        }
        if (pairs) {
            values.push_back((text[i] - '0') * 10 + (text[i + 1] - '0'));
            i += 2;
        } else {
            if (text[i] < 32 || text[i] > 126) refuse(text[i]);
            values.push_back(text[i] - 32);
            ++i;
        }
    }
    return values;
}

Barcode code128(std::string_view text) {
    std::vector<int> values = code128Values(text);
    int check = values[0];
    for (std::size_t i = 1; i < values.size(); ++i) check += static_cast<int>(i) * values[i];
    values.push_back(check % 103);
    values.push_back(kStop);
    Barcode code;
    for (const int v : values) append(code, kCode128[static_cast<std::size_t>(v)]);
    return code;
}

}  // namespace

int Barcode::modules() const { return std::accumulate(widths.begin(), widths.end(), 0); }

Barcode encodeBarcode(BarcodeKind kind, std::string_view text) {
    return kind == BarcodeKind::Code39 ? code39(text) : code128(text);
}

}  // namespace kv
