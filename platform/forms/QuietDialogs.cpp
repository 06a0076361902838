#include "platform/forms/QuietDialogs.h"

#include "platform/forms/Form.h"

namespace kv {

QuietDialogs::QuietDialogs() : before_(dialogHooks()) {
    DialogHooks quiet;
    quiet.message = [this](const MessageBox& box) {
        texts_.push_back(box.text);
        switch (box.buttons) {
            case Buttons::Ok:
                return Answer::Ok;
            case Buttons::YesNo:
                return Answer::No;
            default:
                return Answer::Cancel;
        }
    };
    quiet.input = [this](const std::string&, const std::string&, const std::string&) {
        asked_ = true;
        return std::nullopt;
    };
    quiet.file = [](const std::string&, const std::string&, bool) { return std::nullopt; };
    quiet.printer = [] { return std::nullopt; };
    quiet.modal = [this](Form& form) {
        asked_ = true;
        form.Unload();
    };
    dialogHooks() = std::move(quiet);
}

QuietDialogs::~QuietDialogs() { dialogHooks() = std::move(before_); }

}  // namespace kv
