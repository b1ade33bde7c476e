#include "Arguments.h"

#include <cmath>
#include <cstdlib>
#include <utility>

#include <CLI/CLI.hpp>

namespace corvane::cli {
namespace {

/// The commands and what belongs to each; filled while the line is parsed.
class Parser {
 public:
  Parser() : app_("See and change the settings of the monitoring client.", "corvanectl") {
    app_.set_version_flag("--version", "corvanectl " CORVANE_VERSION, "Show the version.");
    app_.set_help_flag("-h,--help", "Show this help, or that of a command.");
    app_.add_option("--root", arguments_.roots,
                    "Look for the client's files below this folder; can be given more than once.")
        ->allow_extra_args(false)
        ->type_name("FOLDER");
    app_.add_flag("--json", arguments_.json, "Print JSON.");
    app_.require_subcommand(1);
    app_.fallthrough();
    addHelp();
    addSettings();
    addVolumes();
    addPlugins();
    addActs();
    addCheck();
  }

  Arguments parse(int argc, const char* const* argv) {
    try {
      app_.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
      arguments_.output = helpOf(app_);
    } catch (const CLI::CallForVersion& version) {
      arguments_.output = version.what();
    } catch (const CLI::ParseError& error) {
      const auto unknown = app_.remaining();
      const bool isUnknown = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr && !unknown.empty();
      arguments_.error = isUnknown ? "there is no command \"" + unknown.front() + "\"" : error.what();
    }
    return std::move(arguments_);
  }

 private:
  CLI::App& add(CLI::App& parent, const char* name, const char* text, Command command) {
    CLI::App& added = *parent.add_subcommand(name, text);
    added.callback([this, command, &added] {
      // The outer of two commands is heard of as well, after the inner one.
      if (arguments_.command == Command::None || added.get_subcommands().empty())
        arguments_.command = command;
    });
    return added;
  }
  CLI::App& add(const char* name, const char* text, Command command) {
    return add(app_, name, text, command);
  }
  void takeWords(CLI::App& command, const char* name, const char* text, int atLeast) {
    CLI::Option* words = command.add_option(name, arguments_.words, text);
    words->expected(atLeast, CLI::detail::expected_max_vector_size)->type_name("");
    if (atLeast > 0) words->required();
  }
  void takeName(CLI::App& command, const char* name, const char* text) {
    command.add_option(name, arguments_.name, text)->required()->type_name("");
  }

  void addHelp() {
    CLI::App& help = *app_.add_subcommand("help", "Show this help, or that of a command.");
    help.add_option("COMMAND", arguments_.words, "The command.")->type_name("");
    help.callback([this] {
      CLI::App* about = &app_;
      for (const std::string& word : arguments_.words) {
        const auto named =
            about->get_subcommands([&](const CLI::App* command) { return command->get_name() == word; });
        if (named.empty()) throw CLI::ValidationError("help: there is no command \"" + word + "\"");
        about = named.front();
      }
      arguments_.output = helpTextOf(*about);
    });
  }

  void addSettings() {
    add("status", "Show the client's version, state, dates and counts.", Command::Status);
    CLI::App& get = add("get", "Show settings of the Configuration and Options tabs.", Command::Get);
    takeWords(get, "NAME", "The settings; all of them when none is named.", 0);
    CLI::App& set = add("set", "Change settings of the Configuration and Options tabs.", Command::Set);
    takeWords(set, "NAME VALUE", "Names, each with its value.", 2);
  }

  void addVolumes() {
    CLI::App& volumes = add("volumes", "Show the volumes and their alerts.", Command::Volumes);
    volumes.add_flag("--all", arguments_.all, "Show the system's volumes too.");
    volumes.require_subcommand(0, 1);
    CLI::App& set = add(volumes, "set", "Change the alerts of a volume.", Command::VolumesSet);
    takeName(set, "VOLUME", "Its name or its mount path.");
    takeWords(set, "NAME VALUE",
              "absence.warn, absence.minutes, usage.warn or usage.percent, each with its value.", 2);
    CLI::App& purge =
        add(volumes, "purge", "Forget the settings of a volume that is not mounted.", Command::VolumesPurge);
    takeName(purge, "VOLUME", "Its name or its mount path.");
  }

  void addPlugins() {
    CLI::App& plugins = add("plugins", "Show the plug-ins.", Command::Plugins);
    plugins.require_subcommand(0, 1);
    CLI::App& show =
        add(plugins, "show", "Show the options of plug-ins and their values.", Command::PluginsShow);
    takeWords(show, "PLUGIN", "File names or titles; all plug-ins when none is named.", 0);
    const auto named = [&](const char* name, const char* text, Command command) -> CLI::App& {
      CLI::App& added = add(plugins, name, text, command);
      takeName(added, "PLUGIN", "Its file name or its title.");
      return added;
    };
    const auto withOption = [&](const char* name, const char* text, Command command) -> CLI::App& {
      CLI::App& added = named(name, text, command);
      added.add_option("OPTION", arguments_.option, "Its storage key, its title or its number like #1.")
          ->required()
          ->type_name("");
      return added;
    };
    named("enable", "Switch a plug-in on.", Command::PluginsEnable);
    named("disable", "Switch a plug-in off.", Command::PluginsDisable);
    takeWords(withOption("set", "Change the value of an option.", Command::PluginsSet), "VALUE",
              "The value; for a set of check boxes, NAME=on or NAME=off.", 1);
    takeWords(withOption("add", "Add paths to a list.", Command::PluginsAdd), "PATH", "Paths on the client.",
              1);
    takeWords(withOption("remove", "Remove paths from a list.", Command::PluginsRemove), "PATH",
              "Entries of the list.", 1);
    named("test", "Test the settings of a plug-in; its code is the exit status.", Command::PluginsTest);
  }

  void addActs() {
    const auto waits = [&](CLI::App& command) {
      command.add_flag("--wait", arguments_.wait, "Wait until it is over.");
      command
          .add_option("--timeout", arguments_.patience, "How long to wait, in seconds; 600 when not given.")
          ->check(refusalOfSeconds)
          ->type_name("SECONDS");
    };
    waits(add("run", "Run the client now.", Command::Run));
    waits(add("update", "Look for updates of the client now.", Command::Update));
    CLI::App& uninstall = add("uninstall", "Remove the client.", Command::Uninstall);
    uninstall.add_flag("--yes", arguments_.yes, "Confirm the removal.");
    uninstall.add_flag("--quiet", arguments_.quiet, "Do not let the client report its removal.");
    waits(uninstall);
    add("watch", "Tell of everything that the pane would show anew, until interrupted.", Command::Watch);
  }

  void addCheck() {
    CLI::App& check =
        add("check", "Say what of plug-in definitions the pane shows, and why not the rest.", Command::Check);
    takeWords(check, "FILE", "Definitions; those of the client when none is named.", 0);
  }

  /// Asked of the formatter, since a command answers for the one that was named within it.
  static std::string helpTextOf(const CLI::App& app) {
    std::string name = app.get_name();
    for (const CLI::App* outer = app.get_parent(); outer != nullptr; outer = outer->get_parent())
      name = outer->get_name() + " " + name;
    return app.get_formatter()->make_help(&app, name, CLI::AppFormatMode::Normal);
  }
  /// Of the innermost command that was named.
  static std::string helpOf(const CLI::App& app) {
    const auto named = app.get_subcommands();
    return named.empty() ? helpTextOf(app) : helpOf(*named.front());
  }
  /// Why the text is no time to wait; empty when it is one.
  static std::string refusalOfSeconds(const std::string& text) {
    char* end = nullptr;
    const double seconds = std::strtod(text.c_str(), &end);
    const bool isGood = !text.empty() && *end == '\0' && std::isfinite(seconds) && seconds >= 0;
    return isGood ? std::string() : "expected a number of seconds, found " + text;
  }

  CLI::App app_;
  Arguments arguments_;
};

}  // namespace

Arguments parseArguments(int argc, const char* const* argv) { return Parser().parse(argc, argv); }

}  // namespace corvane::cli
