#pragma once
// Workstation: the program on one database file, as the player works it.

#include <memory>
#include <optional>
#include <string>

#include "app/Program.h"
#include "platform/forms/player/PlayedProgram.h"

namespace kv {

class Workstation : public PlayedProgram {
public:
    explicit Workstation(std::string dataFile) : dataFile_(std::move(dataFile)) {}
    ~Workstation() override { stop(); }

    bool start() override;
    void stop() override { program_.reset(); }
    void observe(std::function<void(std::string_view)> listener) override { listener_ = std::move(listener); }
    std::unique_ptr<Connection> connect() override;
    ShownReport* report() override;
    std::optional<std::vector<std::string>> ask(const std::string& dialog, std::vector<std::string> values) override;
    std::vector<std::string> unsound() override;

private:
    std::string dataFile_;
    std::function<void(std::string_view)> listener_;
    std::unique_ptr<Program> program_;
    std::unique_ptr<ShownReport> report_;
};

}  // namespace kv
