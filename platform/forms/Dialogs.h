#pragma once
// Dialogs: message and input boxes, file and printer dialogs, clipboard: one service, which a player of screenplays
// answers in place of a person.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

class Form;

enum class Icon { None, Stop, Question, Exclamation, Information };
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel };
enum class Answer { Ok, Cancel, Yes, No, Retry };

constexpr const char* kProgramTitle = "Korvane Accounting";

struct MessageBox {
    std::string text;
    std::string title = kProgramTitle;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    std::optional<Answer> defaultAnswer;
};

/// Shows a box over the active window and waits for its answer.
Answer showBox(const MessageBox& box);
void MsgBox(std::string_view text, Icon icon = Icon::None, std::string_view title = kProgramTitle);
/// Yes and No. True for Yes.
bool Ask(std::string_view text, std::string_view title = kProgramTitle, Icon icon = Icon::Question,
         bool defaultYes = true);

/// Nothing when cancelled.
std::optional<std::string> InputBox(std::string_view prompt, std::string_view title = kProgramTitle,
                                    std::string_view proposed = {});

struct FileFilter {
    std::string text;  ///< "Excel Files (*.xls)|*.xls|All Files (*.*)|*.*"
    std::string defaultEnding;
    bool callerAsksToOverwrite = false;  ///< the dialog itself does not
};
std::optional<std::string> askSaveFile(std::string_view title, std::string_view proposed, const FileFilter& filter);
std::optional<std::string> askOpenFile(std::string_view title, const FileFilter& filter);

/// What a person chose to print on, and what of it.
struct PrinterChoice {
    std::string printer;  ///< empty: the workstation's default
    int fromPage = 1;
    int toPage = 0;  ///< 0: the last
    int copies = 1;
};
/// The printer dialog. False when cancelled. The choice holds for the next print.
bool askPrinter();
/// The choice for the print that begins now. The printer stays chosen, its pages and copies do not.
PrinterChoice takePrinterChoice();

/// A print on its way to the paper.
struct PaperJob {
    std::string title;
    PrinterChoice choice;
    std::string text;  ///< of the pages printed
};

void setClipboard(std::string_view text);
std::string clipboard();

/// Keystrokes to the control that has the focus: "{Tab}", "{Enter}", "{F2}" and plain characters. With `wait` they have
/// been handled when it returns.
void sendKeys(std::string_view keys, bool wait);

/// Whether Caps Lock was on at the last letter typed: the toolkit does not tell the lock, a capital without Shift does.
bool capsLockOn();

/// The user's desktop; empty where there is no such folder.
std::string desktopFolder();

/// Opens a folder or file with the desktop's own program; false where there is none.
bool openWithDesktop(const std::string& path);

/// What a player puts in place of the person. Empty members: the real thing.
struct DialogHooks {
    std::function<Answer(const MessageBox&)> message;
    std::function<std::optional<std::string>(const std::string& prompt, const std::string& title,
                                             const std::string& proposed)>
        input;
    std::function<std::optional<std::string>(const std::string& title, const std::string& proposed, bool saving)> file;
    std::function<std::optional<PrinterChoice>()> printer;  ///< nothing: cancelled
    std::function<void(const PaperJob&)> paper;             ///< takes what a printer would print
    std::function<void(Form&)> modal;  ///< called when a modal form has appeared; plays work in it here
};
DialogHooks& dialogHooks();

}  // namespace kv
