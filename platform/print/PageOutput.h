#pragma once
// Pages written out: PDF, pictures, a printer. A file is written whole or not at all.

#include <string>
#include <vector>

#include "platform/print/Document.h"
#include "platform/print/TableOutput.h"

namespace kv {

/// Raises 75 when the file cannot be written. False when it was stopped; no file is left then.
bool writePdf(const Document& document, const std::string& path, const Progress& progress = {});

/// One picture a page: "<stem>.png" for one page, else "<stem>-1.png" and so on. Gives the files' names.
std::vector<std::string> writePng(const Document& document, const std::string& stem, double dotsPerInch = 144);

struct PrintJob {
    std::string printer;  ///< empty: the system's default
    int fromPage = 1;
    int toPage = 0;  ///< 0: the last
    int copies = 1;
    std::string outputFile;  ///< print into this PDF file instead of a printer
};

/// Names of the printers that this workstation knows; the default first.
std::vector<std::string> printerNames();
/// Raises 482 when there is no such printer or it refuses. False when it was stopped.
bool printPages(const Document& document, const PrintJob& job, const Progress& progress = {});

}  // namespace kv
