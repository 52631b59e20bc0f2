#pragma once

#include <CLI/App.hpp>

#include <iosfwd>
#include <string>

namespace orvel {

/// The options of `orvel prefs`.
class PrefsOptions {
public:
    explicit PrefsOptions(CLI::App& app);

    [[nodiscard]] bool wereGiven() const { return prefs_->parsed(); }
    /// Does what was asked for; returns the exit status.
    int run(std::istream& in, std::ostream& out, std::ostream& err);

private:
    CLI::App* prefs_;
    CLI::App* list_;
    CLI::App* get_;
    CLI::App* set_;
    CLI::App* unset_;
    CLI::App* export_;
    CLI::App* import_;
    std::string key_;
    std::string file_;
    bool skipsUnknown_ = false;
};

}  // namespace orvel
