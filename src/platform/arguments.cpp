// Words of the command line, by CLI11.
#include "platform/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

namespace platform {
namespace {

constexpr size_t kHelpColumn = 24;

// Help as the package makes it, with a usage line in our own words.
class HelpFormatter : public CLI::Formatter {
 public:
  explicit HelpFormatter(const Program& program) : program_(program) { column_width(kHelpColumn); }

  std::string make_usage(const CLI::App* app, std::string name) const override {
    const Command* const command = CommandNamed(app->get_name());
    return "\nUsage: " + name + ' ' + (command != nullptr ? command->usage : program_.usage) + '\n';
  }

  // The list of the commands has the first line of each one's help.
  std::string make_subcommand(const CLI::App* app) const override {
    std::stringstream line;
    const std::string help = app->get_description();
    CLI::detail::format_help(line, app->get_name(), help.substr(0, help.find('\n')), column_width_);
    return line.str();
  }

  std::string make_positionals(const CLI::App*) const override { return {}; }  // the usage line names them

  std::string make_option_opts(const CLI::Option* option) const override {
    return option->get_type_name().empty() ? "" : ' ' + option->get_type_name();
  }

 private:
  const Command* CommandNamed(const std::string& name) const {
    const auto found = std::find_if(program_.commands.begin(), program_.commands.end(),
                                    [&](const Command& command) { return command.name == name; });
    return found == program_.commands.end() ? nullptr : &*found;
  }

  const Program& program_;
};

std::string OneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

// Takes the program's words; what they give goes to `arguments`.
class Parser {
 public:
  Parser(const Program& program, Arguments& arguments)
      : arguments_(arguments), app_(program.help, program.name) {
    app_.formatter(std::make_shared<HelpFormatter>(program));
    app_.footer(program.footer);
    app_.set_help_flag("--help", "shows this text");
    app_.set_version_flag("--version", program.version, "shows the version");
    AddOptions(app_, program.options);
    for (const Command& command : program.commands) AddCommand(command);
    if (!program.commands.empty()) app_.require_subcommand(1);
  }

  void Parse(std::vector<std::string> words) {
    std::reverse(words.begin(), words.end());  // as the package wants them
    try {
      app_.parse(std::move(words));
      for (const CLI::App* const command : app_.get_subcommands()) arguments_.command = command->get_name();
      // Options that were not given have no values.
      std::erase_if(arguments_.values, [](const auto& option) { return option.second.empty(); });
    } catch (const CLI::CallForHelp&) {
      arguments_.answer = CLI::detail::find_and_replace(app_.help(), "\n\n\n", "\n\n");
    } catch (const CLI::CallForVersion& version) {
      arguments_.answer = version.what() + std::string("\n");
    } catch (const CLI::ParseError& error) {
      arguments_.wrong = OneLine(error.what());
    }
  }

 private:
  void AddCommand(const Command& command) {
    CLI::App& app = *app_.add_subcommand(command.name, command.help);
    app.group("Commands");
    constexpr auto kMost = static_cast<size_t>(std::numeric_limits<int>::max() / 2);
    app.add_option("FILE", arguments_.rest)
        ->required()
        ->expected(1, static_cast<int>(std::min(command.mostFiles, kMost)))
        ->allow_extra_args(command.mostFiles > 1);
    AddOptions(app, command.options);
  }

  void AddOptions(CLI::App& app, const std::vector<Option>& options) {
    for (const Option& option : options) AddOption(app, option);
  }

  void AddOption(CLI::App& app, const Option& option) {
    std::vector<std::string>& values = arguments_.values[option.name];
    CLI::Option* added = nullptr;
    if (option.value.empty()) {
      added = app.add_flag_function(
          option.name, [&](int64_t) { values = {"true"}; }, option.help);
      added->disable_flag_override();
    } else {
      // Each value is taken as it stands: without extra words, and a value in brackets is no list.
      added =
          app.add_option(option.name, values, option.help)->allow_extra_args(false)->type_name(option.value);
      added->multi_option_policy(option.repeatable ? CLI::MultiOptionPolicy::TakeAll
                                                   : CLI::MultiOptionPolicy::Throw);
      if (!option.repeatable) added->expected(1);
    }
    added->required(option.required);
    if (!option.group.empty()) added->group(option.group);
    if (option.range) {
      added->check([range = *option.range](const std::string& word) {
        const std::optional<int64_t> number = ToNumber(word);
        if (number && *number >= range.least && *number <= range.most) return std::string();
        return "a whole number from " + std::to_string(range.least) + " to " + std::to_string(range.most) +
               " is wanted, not " + word;
      });
    }
  }

  Arguments& arguments_;
  CLI::App app_;
};

// Of a program without commands: takes the "--" words, each with the value behind it, out of all others.
std::vector<std::string> TakeOptionWords(const Program& program, std::span<const std::string> words,
                                         std::vector<std::string>& rest) {
  std::vector<std::string> taken;
  for (size_t i = 0; i < words.size(); ++i) {
    if (!words[i].starts_with("--")) {
      rest.push_back(words[i]);
      continue;
    }
    taken.push_back(words[i]);
    const bool wantsValue =
        std::any_of(program.options.begin(), program.options.end(),
                    [&](const Option& option) { return option.name == words[i] && !option.value.empty(); });
    if (wantsValue && i + 1 < words.size()) taken.push_back(words[++i]);
  }
  return taken;
}

// Why the words name no command; empty when they do, or when they begin with an option. The package would not
// say which word is none.
std::string WhyNoCommand(const Program& program, std::span<const std::string> words) {
  if (words.empty()) return "a command is missing";
  const bool known = words.front().starts_with('-') ||
                     std::any_of(program.commands.begin(), program.commands.end(),
                                 [&](const Command& command) { return command.name == words.front(); });
  return known ? "" : OneLine("there is no command " + words.front());
}

}  // namespace

Arguments ReadArguments(const Program& program, std::span<const std::string> words) {
  Arguments arguments;
  if (program.commands.empty()) {
    Parser(program, arguments).Parse(TakeOptionWords(program, words, arguments.rest));
    return arguments;
  }
  arguments.wrong = WhyNoCommand(program, words);
  if (arguments.wrong.empty()) Parser(program, arguments).Parse({words.begin(), words.end()});
  return arguments;
}

std::optional<int64_t> ToNumber(std::string_view word) {
  int64_t number = 0;
  const char* const end = word.data() + word.size();
  const auto result = std::from_chars(word.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return number;
}

}  // namespace platform
