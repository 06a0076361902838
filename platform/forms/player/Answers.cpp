// The commands of a play that answer boxes and dialogs, sign in and close windows.
#include <QApplication>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPushButton>

#include "platform/base/Text.h"
#include "platform/forms/Grid.h"
#include "platform/forms/Lists.h"
#include "platform/forms/player/Hands.h"
#include "platform/forms/player/Performance.h"

namespace kv {

namespace {

template <class Value>
struct Name {
    std::string_view name;
    Value value;
};

constexpr Name<Answer> kAnswers[] = {
    {"OK", Answer::Ok}, {"Cancel", Answer::Cancel}, {"Yes", Answer::Yes}, {"No", Answer::No}, {"Retry", Answer::Retry}};

constexpr Name<Icon> kIcons[] = {{"none", Icon::None},
                                 {"stop", Icon::Stop},
                                 {"question", Icon::Question},
                                 {"exclamation", Icon::Exclamation},
                                 {"information", Icon::Information}};

template <class Value, std::size_t N>
Value valueOf(const Name<Value> (&names)[N], const std::string& name, std::string_view what) {
    for (const auto& one : names) {
        if (equalsNoCase(one.name, name)) return one.value;
    }
    throw Failure("there is no " + std::string(what) + " " + inQuotes(name));
}

template <class Value, std::size_t N>
std::string nameOf(const Name<Value> (&names)[N], Value value) {
    for (const auto& one : names) {
        if (one.value == value) return std::string(one.name);
    }
    return "none";
}

void mustBe(const char* what, bool held, const std::string& expected, const std::string& found) {
    if (!held) throw Failure("expected the " + std::string(what) + " " + expected + ", found " + found);
}

/// The words behind the button: title "Warning", icon stop, default No.
void checkLooks(const BoxWindow& box, const PlayLine& line, std::size_t from) {
    for (std::size_t i = from; line.has(i); i += 2) {
        const std::string what = line.bare(i);
        const std::string& wanted = line.pattern(i + 1, "what the box should have");
        if (what == "title") {
            mustBe("title", matches(wanted, box.box().title), inQuotes(wanted), inQuotes(box.box().title));
        } else if (what == "icon") {
            const Icon icon = valueOf(kIcons, wanted, "icon");
            mustBe("icon", icon == box.box().icon, wanted, nameOf(kIcons, box.box().icon));
        } else if (what == "default") {
            const Answer answer = valueOf(kAnswers, wanted, "button");
            mustBe("default button", answer == box.defaultAnswer(), wanted, nameOf(kAnswers, box.defaultAnswer()));
        } else {
            throw Failure("a box has no " + inQuotes(line.word(i, "")));
        }
    }
}

void answerBox(BoxWindow& box, const PlayLine& line, std::size_t at) {
    const Answer answer = valueOf(kAnswers, line.word(at + 1, "the button"), "button");
    checkLooks(box, line, at + 2);
    QPushButton* button = box.button(answer);
    if (!button) throw Failure("the box has no button " + line.word(at + 1, "the button"));
    click(button, button->rect().center());
    if (!box.answered()) throw Failure("the box did not take the click");
}

void message(Performance& show, const PlayLine& line) {
    const std::string& wanted = line.pattern(1, "the text of the box");
    BoxWindow* box = show.stage.box();
    if (!box) throw Failure("expected the box " + inQuotes(wanted) + ", found " + show.stage.describe());
    const std::string found = oneLineEnd(box->box().text);
    mustBe("box", matches(wanted, found), inQuotes(wanted), show.stage.describe());
    answerBox(*box, line, 1);
}

void maybeMessage(Performance& show, const PlayLine& line) {
    const std::string& wanted = line.pattern(2, "the text of the box");
    valueOf(kAnswers, line.word(3, "the button"), "button");
    BoxWindow* box = show.stage.box();
    if (box && matches(wanted, oneLineEnd(box->box().text))) answerBox(*box, line, 2);
}

void input(Performance& show, const PlayLine& line) {
    line.atMost(3);
    const std::string& wanted = line.pattern(1, "the prompt of the input box");
    InputWindow* box = show.stage.asking() ? show.stage.asking()->input : nullptr;
    if (!box) throw Failure("expected the input box " + inQuotes(wanted) + ", found " + show.stage.describe());
    mustBe("input box", matches(wanted, oneLineEnd(box->prompt())), inQuotes(wanted), inQuotes(box->prompt()));
    if (line.bare(2) == "cancel") return box->cancel();
    typeOver(box->field(), line.text(2, "the answer"));
    box->accept();
}

Scene& dialogOf(Performance& show, Scene::Kind kind, const char* what) {
    Scene* scene = show.stage.asking();
    if (!scene || scene->kind != kind) {
        throw Failure("expected the " + std::string(what) + ", found " + show.stage.describe());
    }
    return *scene;
}

/// printer choose [pages FROM TO] [copies N], printer cancel
void printer(Performance& show, const PlayLine& line) {
    line.atMost(7);
    const std::string& answer = line.word(1, "choose or cancel");
    if (answer != "choose" && answer != "cancel") throw Failure("a printer dialog takes choose or cancel");
    Scene& scene = dialogOf(show, Scene::Kind::Printer, "printer dialog");
    if (answer == "choose") {
        PrinterChoice choice;
        std::size_t at = 2;
        if (line.bare(at) == "pages") {
            choice.fromPage = line.number(at + 1, "the first page");
            choice.toPage = line.number(at + 2, "the last page");
            at += 3;
        }
        if (line.bare(at) == "copies") choice.copies = line.number(at + 1, "a number of copies");
        scene.printer = choice;
    }
    scene.answered = true;
}

void chooseFile(Performance& show, const PlayLine& line) {
    line.atMost(2);
    const std::string name = line.text(1, "the name of a file");
    Scene& scene = dialogOf(show, Scene::Kind::File, "file dialog");
    if (line.bare(1) != "cancel") scene.file = show.outPath(name);
    scene.answered = true;
}

// ---- dialogs -----------------------------------------------------------------------------------------------------

void pick(Performance& show, const PlayLine& line) {
    line.atMost(2);
    const std::string text = line.text(1, "the text to search");
    Form& dialog = show.stage.form();
    Control& field = show.stage.usable("txtSearchStr", {"TextBox"});
    focusOn(field);
    typeOver(fieldOf(field), text);
    settle();
    Control& found = show.stage.control("grdDispWindow", {"Grid", "ListView"});
    const std::string holding = "\"*" + replaceAll(line.word(1, ""), "\"", "\\\"") + "*\"";
    const PlayLine rowLine(line.file(), line.number(), "row grdDispWindow " + replaceAll(holding, "\n", "\\n"));
    if (auto* list = dynamic_cast<ListView*>(&found)) {
        const int row = findListRow(*list, rowLine, 2);
        if (row < 0) throw Failure("no row of " + dialog.name() + " holds " + inQuotes(text));
        list->select(row);
    } else {
        const auto place = findGridRow(dynamic_cast<Grid&>(found), rowLine, 2);
        if (!place) throw Failure("no row of " + dialog.name() + " holds " + inQuotes(text));
        focusOn(found);
        goToCell(viewOf(found), place->first, place->second);
    }
    settle();
    clickControl(show.stage.usable("cmdSelect", {"CommandButton"}));
}

void dialog(Performance& show, const PlayLine& line) {
    const std::string& name = line.word(1, "the name of a dialog");
    std::vector<std::string> values;
    for (std::size_t i = 2; line.has(i); ++i) values.push_back(line.text(i, "a value"));
    show.answer = show.program.ask(name, std::move(values));
}

void close(Performance& show, const PlayLine& line) {
    line.atMost(1);
    QWidget* window = show.stage.asking() ? show.stage.window() : frameOf(show.stage.form());
    if (!window) throw Failure("this window is closed by its answer");
    window->close();
}

// ---- sign in -----------------------------------------------------------------------------------------------------

bool isSignIn(const Performance& show, const Form* form) {
    return form && form->control(show.program.signIn().user) && form->control(show.program.signIn().password);
}

void signInAs(Performance& show, const PlayLine& line, std::size_t at, bool refused) {
    line.atMost(at + 2);
    show.signing = SignInTry{.line = line,
                             .user = line.text(at, "the employee code"),
                             .password = line.text(at + 1, "the password"),
                             .refused = refused};
    Form* front = show.stage.asking() ? nullptr : Form::active();
    if (isSignIn(show, front)) return fillSignIn(show, *front);
    if (Form::shell()) throw Failure("somebody is signed in already");
    const bool up = show.program.start();
    settle();
    // After a refusal the dialog may have stayed, and a later line of the play have signed in, also by its own keys.
    const SignInTry last = *show.signing;
    if (!last.filled) throw Failure("expected the sign-in dialog, found that none appeared");
    if (last.refused && up && last.ended) throw Failure("expected a refused sign-in, found the shell");
    if (last.refused) return;
    if (!up || !Form::shell()) throw Failure("expected the shell after the sign-in, found none");
}

void signin(Performance& show, const PlayLine& line) { signInAs(show, line, 1, false); }
void refusedSignin(Performance& show, const PlayLine& line) { signInAs(show, line, 2, true); }

constexpr CommandEntry kCommands[] = {
    {"message", message},       {"maybe message", maybeMessage},
    {"input", input},           {"printer", printer},
    {"choosefile", chooseFile}, {"pick", pick},
    {"dialog", dialog},         {"close", close},
    {"signin", signin},         {"refused signin", refusedSignin},
};

}  // namespace

void fillSignIn(Performance& show, Form& dialog) {
    show.signing->filled = true;
    const SignInTry attempt = *show.signing;
    if (!isSignIn(show, &dialog)) throw Failure("expected the sign-in dialog, found the form " + dialog.name());
    const PlayedProgram::SignIn names = show.program.signIn();
    for (const auto& [name, text] :
         {std::pair(names.user, attempt.user), std::pair(names.password, attempt.password)}) {
        Control& field = show.stage.usable(name, {"TextBox", "ComboBox"});
        focusOn(field);
        typeOver(fieldOf(field), text);
    }
    clickControl(show.stage.usable(names.accept, {"CommandButton"}));
    settle();
    show.signing->ended = !dialog.isVisible();
    if (!attempt.refused && dialog.isVisible())
        throw Failure("expected the shell after the sign-in, found the sign-in refused");
    if (attempt.refused && !dialog.isVisible() && Form::shell())
        throw Failure("expected a refused sign-in, found the shell");
}

std::span<const CommandEntry> answerCommands() { return kCommands; }

}  // namespace kv
