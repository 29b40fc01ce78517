// The command line: one table of options per command drives both the parser and the help text.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace EDATool {

struct OptionDef {
    const char *name;      // "--json"
    char letter;           // 'o' for "-o", or 0
    const char *valueName; // what the help calls the value; null for an option without one
    bool repeats;          // may be given more than once
    const char *help;      // may have line feeds
    bool takesAll = false; // takes all texts up to the next option as its values
};

class Arguments;

struct CommandDef {
    const char *name;
    const char *operands; // as the help writes them: "FILE..."
    const char *summary;  // one line
    const char *details;  // paragraphs
    std::vector<OptionDef> options;
    int (*run)(const Arguments &arguments);
};

// What a command was given.
class Arguments {
public:
    bool has(const std::string &option) const { return values_.count(option) != 0; }

    // The value of an option, or `fallback` where it is not given.
    std::string value(const std::string &option, const std::string &fallback = std::string()) const;

    // All values of an option that repeats, in order.
    const std::vector<std::string> &values(const std::string &option) const;

    const std::vector<std::string> &operands() const { return operands_; }

private:
    friend Arguments parseArguments(const CommandDef &command, const std::vector<std::string> &texts);
    std::map<std::string, std::vector<std::string>> values_;
    std::vector<std::string> operands_;
};

// Sorts the texts behind the command's name into options and operands. "--name=value", "--name value", "-o
// value" and "-ovalue" are the same thing; "--" ends the options. A text that starts with "-" is no value
// unless it is behind "=". Throws UsageFailure.
Arguments parseArguments(const CommandDef &command, const std::vector<std::string> &texts);

// What "eda COMMAND --help" prints.
std::string helpText(const CommandDef &command);

} // namespace EDATool
