#include "app/cli/prefs_options.hpp"

#include "app/cli/prefs_command.hpp"
#include "platform/command_line.hpp"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <ostream>
#include <vector>

namespace orvel {

namespace {

constexpr int kWrongUse = 2;

/// The services of the system take absolute paths; "-" stays what it is.
std::string absolute(const std::string& file) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(file, error);
    return file == "-" || error ? file : path.string();
}

}  // namespace

PrefsOptions::PrefsOptions(CLI::App& app)
    : prefs_(app.add_subcommand("prefs", "Read and change the settings")),
      list_(prefs_->add_subcommand("list", "Print every setting")),
      get_(prefs_->add_subcommand("get", "Print one setting")),
      set_(prefs_->add_subcommand("set", "Store a setting")),
      unset_(prefs_->add_subcommand("unset", "Remove a setting, so that its default applies")),
      export_(prefs_->add_subcommand("export", "Write what is stored as a property list")),
      import_(prefs_->add_subcommand("import", "Store every setting of a property list")) {
    prefs_->require_subcommand(1);
    set_->prefix_command();  // A value may begin with a dash.
    set_->footer(
        "orvel prefs set KEY VALUE...\n"
        "  a boolean is true or false, data is base64 text,\n"
        "  a list is one JSON array or as many values as it has elements");
    for (CLI::App* command : {get_, unset_}) {
        command->add_option("KEY", key_, "Name of the setting")->required();
    }
    export_->add_option("FILE", file_, "Where to; - for standard output")->required();
    import_->add_option("FILE", file_, "Where from; - for standard input")->required();
    import_->add_flag("--skip-unknown", skipsUnknown_,
                      "Pass over keys that Orvel does not know, as a macOS domain has them");
}

int PrefsOptions::run(std::istream& in, std::ostream& out, std::ostream& err) {
    CommandLine line =
        makeCommandLine([&err](std::string_view text) { err << "orvel: " << text << std::endl; });
    PrefsCommand command(line, out, err);
    if (list_->parsed()) return command.list();
    if (get_->parsed()) return command.get(key_);
    if (unset_->parsed()) return command.unset(key_);
    if (export_->parsed()) return command.exportTo(absolute(file_));
    if (import_->parsed()) return command.importFrom(absolute(file_), in, skipsUnknown_);
    const std::vector<std::string> words = set_->remaining();
    if (words.size() < 2) {
        err << "orvel prefs set: KEY and VALUE are required\n"
               "Run 'orvel prefs set --help' for more information.\n";
        return kWrongUse;
    }
    const auto value = words.begin() + (words[1] == "--" ? 2 : 1);
    return command.set(words.front(), {value, words.end()});
}

}  // namespace orvel
