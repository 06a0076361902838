#include "platform/print/PageOutput.h"

#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>

#include "platform/base/Error.h"
#include "platform/forms/Dialogs.h"
#include "platform/print/PagePainter.h"

namespace kv {
namespace {

constexpr int kPdfDotsPerInch = 1200;
constexpr int kPrinterDotsPerInch = 600;

[[noreturn]] void cannotWrite(const std::string& path) {
    throw Error(75, "Report", "The file cannot be written: " + path);
}

QPageLayout layoutOf(const Document& document) {
    const QSizeF paper(document.width, document.height);
    // a page wider than high is its portrait paper turned
    const bool turned = document.width > document.height;
    const QPageSize size(turned ? paper.transposed() : paper, QPageSize::Millimeter);
    return QPageLayout(size, turned ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
}

bool paintAll(QPagedPaintDevice& device, const Document& document, double dotsPerMm, int from, int to,
              const Progress& progress) {
    QPainter painter;
    if (!painter.begin(&device)) return false;
    PagePainter pages(document);
    for (int p = from; p <= to; ++p) {
        if (p > from && !device.newPage()) return false;
        pages.paint(painter, document.pages[static_cast<std::size_t>(p)], dotsPerMm, false);
        if (progress && !progress(p - from + 1, to - from + 1)) return false;
    }
    return painter.end();
}

}  // namespace

bool writePdf(const Document& document, const std::string& path, const Progress& progress) {
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly)) cannotWrite(path);
    bool whole = false;
    bool stopped = false;
    {
        QPdfWriter writer(&file);
        writer.setResolution(kPdfDotsPerInch);
        writer.setPageLayout(layoutOf(document));
        writer.setTitle(QString::fromStdString(document.title));
        writer.setCreator(QStringLiteral("Korvane Accounting"));
        const auto watched = [&](int done, int all) {
            stopped = progress && !progress(done, all);
            return !stopped;
        };
        whole =
            paintAll(writer, document, kPdfDotsPerInch / 25.4, 0, static_cast<int>(document.pages.size()) - 1, watched);
    }
    if (stopped) {
        file.cancelWriting();
        return false;
    }
    if (!whole || !file.commit()) cannotWrite(path);
    return true;
}

std::vector<std::string> writePng(const Document& document, const std::string& stem, double dotsPerInch) {
    std::vector<std::string> names;
    PagePainter pages(document);
    for (std::size_t p = 0; p < document.pages.size(); ++p) {
        const std::string name =
            document.pages.size() == 1 ? stem + ".png" : stem + "-" + std::to_string(p + 1) + ".png";
        const QImage image = pageImage(pages, document, document.pages[p], dotsPerInch);
        if (!image.save(QString::fromStdString(name), "PNG")) cannotWrite(name);
        names.push_back(name);
    }
    return names;
}

std::vector<std::string> printerNames() {
    std::vector<std::string> names;
    for (const QString& name : QPrinterInfo::availablePrinterNames()) names.push_back(name.toStdString());
    const std::string standard = QPrinterInfo::defaultPrinterName().toStdString();
    const auto at = std::find(names.begin(), names.end(), standard);
    if (at != names.end()) std::rotate(names.begin(), at, at + 1);
    return names;
}

namespace {

/// The pages of a job as one text, for those who look at a print without paper.
PaperJob paperJob(const Document& document, const PrintJob& job, int to) {
    PaperJob out{document.title, {job.printer, job.fromPage, to, job.copies}, {}};
    for (int p = job.fromPage; p <= to; ++p) {
        const PaperPage& page = document.pages[static_cast<std::size_t>(p - 1)];
        out.text += joinedText(page, textLines(page)) + "\n";
    }
    return out;
}

}  // namespace

bool printPages(const Document& document, const PrintJob& job, const Progress& progress) {
    const int all = static_cast<int>(document.pages.size());
    const int to = job.toPage <= 0 || job.toPage > all ? all : job.toPage;
    if (job.fromPage < 1 || job.fromPage > to) throw Error(482, "Report", "There are no such pages to print");
    if (dialogHooks().paper && job.outputFile.empty()) {
        dialogHooks().paper(paperJob(document, job, to));
        return true;
    }
    QPrinter printer(QPrinter::HighResolution);
    if (!job.outputFile.empty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(job.outputFile));
    } else {
        const std::vector<std::string> known = printerNames();
        if (known.empty()) throw Error(482, "Report", "No printer is set up on this workstation");
        const std::string name = job.printer.empty() ? known.front() : job.printer;
        if (std::find(known.begin(), known.end(), name) == known.end()) {
            throw Error(482, "Report", "There is no printer '" + name + "' on this workstation");
        }
        printer.setPrinterName(QString::fromStdString(name));
    }
    printer.setResolution(kPrinterDotsPerInch);
    printer.setPageLayout(layoutOf(document));
    printer.setFullPage(true);
    printer.setCopyCount(job.copies);
    printer.setDocName(QString::fromStdString(document.title));
    bool stopped = false;
    const auto watched = [&](int done, int most) {
        stopped = progress && !progress(done, most);
        if (stopped) printer.abort();
        return !stopped;
    };
    const bool whole = paintAll(printer, document, kPrinterDotsPerInch / 25.4, job.fromPage - 1, to - 1, watched);
    if (!whole && !stopped) throw Error(482, "Report", "The printer does not take the report");
    return !stopped;
}

}  // namespace kv
