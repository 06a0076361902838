#include "platform/forms/Dialogs.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>
#include <QStandardPaths>
#include <QUrl>

#include "platform/base/Text.h"
#include "platform/forms/FormImpl.h"

namespace kv {

namespace {

/// "Excel Files (*.xls)|*.xls|All Files (*.*)|*.*" as the toolkit writes it.
QStringList filtersOf(const FileFilter& filter) {
    QStringList filters;
    const auto parts = split(filter.text, '|');
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        const QString caption = qs(parts[i]).section(u'(', 0, 0).trimmed();
        filters += caption + QStringLiteral(" (") + qs(replaceAll(parts[i + 1], ";", " ")) + QStringLiteral(")");
    }
    return filters;
}

std::optional<std::string> askFile(std::string_view title, std::string_view proposed, const FileFilter& filter,
                                   bool saving) {
    if (dialogHooks().file) return dialogHooks().file(std::string(title), std::string(proposed), saving);
    const Reactivate before;
    QFileDialog dialog(QApplication::activeWindow(), qs(title));
    dialog.setAcceptMode(saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters(filtersOf(filter));
    if (!filter.defaultEnding.empty()) dialog.setDefaultSuffix(qs(filter.defaultEnding));
    if (filter.callerAsksToOverwrite) dialog.setOption(QFileDialog::DontConfirmOverwrite);
    if (!proposed.empty()) dialog.selectFile(qs(proposed));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return toStd(dialog.selectedFiles().front());
}

PrinterChoice& printerChoice() {
    static PrinterChoice choice;
    return choice;
}

std::optional<PrinterChoice> askPrinterDialog() {
    const Reactivate before;
    QPrinter printer;
    if (!printerChoice().printer.empty()) printer.setPrinterName(qs(printerChoice().printer));
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    const bool range = printer.printRange() == QPrinter::PageRange;
    return PrinterChoice{toStd(printer.printerName()), range ? printer.fromPage() : 1, range ? printer.toPage() : 0,
                         printer.copyCount()};
}

}  // namespace

DialogHooks& dialogHooks() {
    static DialogHooks hooks;
    return hooks;
}

Answer showBox(const MessageBox& box) {
    lastMessage() = box.text;
    if (dialogHooks().message) return dialogHooks().message(box);
    const Reactivate before;
    const auto window = openBox(box);
    QEventLoop loop;
    window->onAnswered = [&loop] { loop.quit(); };
    if (!window->answered()) loop.exec(QEventLoop::DialogExec);
    return window->answered().value_or(window->escapeAnswer());
}

void MsgBox(std::string_view text, Icon icon, std::string_view title) {
    showBox({.text = std::string(text), .title = std::string(title), .icon = icon});
}

bool Ask(std::string_view text, std::string_view title, Icon icon, bool defaultYes) {
    return showBox({.text = std::string(text),
                    .title = std::string(title),
                    .icon = icon,
                    .buttons = Buttons::YesNo,
                    .defaultAnswer = defaultYes ? Answer::Yes : Answer::No}) == Answer::Yes;
}

std::optional<std::string> InputBox(std::string_view prompt, std::string_view title, std::string_view proposed) {
    if (dialogHooks().input) return dialogHooks().input(std::string(prompt), std::string(title), std::string(proposed));
    const Reactivate before;
    const auto window = openInput(prompt, title, proposed);
    QEventLoop loop;
    window->onDone = [&loop] { loop.quit(); };
    if (!window->done()) loop.exec(QEventLoop::DialogExec);
    return window->result();
}

std::optional<std::string> askSaveFile(std::string_view title, std::string_view proposed, const FileFilter& filter) {
    return askFile(title, proposed, filter, true);
}

std::optional<std::string> askOpenFile(std::string_view title, const FileFilter& filter) {
    return askFile(title, {}, filter, false);
}

bool askPrinter() {
    const std::optional<PrinterChoice> choice = dialogHooks().printer ? dialogHooks().printer() : askPrinterDialog();
    if (choice) printerChoice() = *choice;
    return choice.has_value();
}

PrinterChoice takePrinterChoice() {
    const PrinterChoice choice = printerChoice();
    printerChoice() = {choice.printer};
    return choice;
}

void setClipboard(std::string_view text) { QGuiApplication::clipboard()->setText(qs(text)); }

std::string clipboard() { return toStd(QGuiApplication::clipboard()->text()); }

std::string desktopFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    return QFileInfo(folder).isDir() ? toStd(folder) : std::string();
}

bool openWithDesktop(const std::string& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(qs(path))); }

}  // namespace kv
