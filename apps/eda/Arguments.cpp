// The command line: parsing and help from one table.
#include "Arguments.h"

#include "Failure.h"
#include "Printable.h"

#include <algorithm>
#include <string_view>

namespace EDATool {

namespace {

constexpr OptionDef helpOption = {"--help", 'h', nullptr, false, "Prints this text."};

std::vector<OptionDef> allOptions(const CommandDef &command) {
    std::vector<OptionDef> options = command.options;
    options.push_back(helpOption);
    return options;
}

// What follows an option in the same text, if anything does.
struct SplitOption {
    std::string name;
    std::string value;
    bool hasValue = false;
};

SplitOption splitOption(const std::string &text) {
    SplitOption split;
    if (text.compare(0, 2, "--") == 0) {
        const std::size_t equals = text.find('=');
        split.name = text.substr(0, equals);
        split.hasValue = equals != std::string::npos;
        if (split.hasValue) split.value = text.substr(equals + 1);
    } else {
        split.name = text.substr(0, 2);
        split.hasValue = text.size() > 2;
        if (split.hasValue) split.value = text.substr(2);
    }
    return split;
}

const OptionDef *findOption(const std::vector<OptionDef> &options, const std::string &name) {
    for (const OptionDef &option : options) {
        const bool isLetter = name.size() == 2 && option.letter != 0 && name[1] == option.letter;
        if (name == option.name || isLetter) return &option;
    }
    return nullptr;
}

[[noreturn]] void refuse(const CommandDef &command, const std::string &reason) {
    throw UsageFailure(reason + "; see: eda " + command.name + " --help");
}

bool isOptionText(const std::string &text) { return text.size() > 1 && text[0] == '-'; }

// The option's value, from the same text or the next one, which is then taken.
std::string takeValue(const CommandDef &command, const OptionDef &option, const SplitOption &split,
                      const std::vector<std::string> &texts, std::size_t &index) {
    if (option.valueName == nullptr) {
        if (split.hasValue) refuse(command, std::string(option.name) + " takes no value");
        return std::string();
    }
    std::string value = split.value;
    if (!split.hasValue) {
        if (index + 1 >= texts.size() || isOptionText(texts[index + 1])) {
            refuse(command, std::string(option.name) + " needs a value, " + option.valueName);
        }
        value = texts[++index];
    }
    if (value.empty()) refuse(command, std::string("the value of ") + option.name + " is empty");
    return value;
}

std::string optionHead(const OptionDef &option) {
    std::string head = "  ";
    head += option.letter != 0 ? std::string("-") + option.letter + ", " : std::string("    ");
    head += option.name;
    if (option.valueName != nullptr) head += std::string(" ") + option.valueName;
    return head;
}

// The head in the left column, the help lines in the right one.
std::string optionLines(const OptionDef &option, std::size_t column) {
    std::string lines = optionHead(option);
    std::string_view help = option.help;
    while (!help.empty()) {
        const std::size_t end = std::min(help.find('\n'), help.size());
        const std::size_t width =
            lines.size() - (lines.rfind('\n') == std::string::npos ? 0 : lines.rfind('\n') + 1);
        lines += std::string(column > width ? column - width : 0, ' ');
        lines += help.substr(0, end);
        lines += '\n';
        help.remove_prefix(std::min(end + 1, help.size()));
    }
    return lines;
}

} // namespace

std::string Arguments::value(const std::string &option, const std::string &fallback) const {
    const auto found = values_.find(option);
    return found == values_.end() ? fallback : found->second.back();
}

const std::vector<std::string> &Arguments::values(const std::string &option) const {
    static const std::vector<std::string> none;
    const auto found = values_.find(option);
    return found == values_.end() ? none : found->second;
}

Arguments parseArguments(const CommandDef &command, const std::vector<std::string> &texts) {
    const std::vector<OptionDef> options = allOptions(command);
    Arguments arguments;
    bool optionsEnded = false;
    for (std::size_t index = 0; index < texts.size(); ++index) {
        const std::string &text = texts[index];
        if (!optionsEnded && text == "--") {
            optionsEnded = true;
        } else if (!optionsEnded && isOptionText(text)) {
            const SplitOption split = splitOption(text);
            const OptionDef *option = findOption(options, split.name);
            if (option == nullptr) refuse(command, "unknown option " + inQuotes(split.name));
            std::vector<std::string> &values = arguments.values_[option->name];
            if (!values.empty() && !option->repeats)
                refuse(command, std::string(option->name) + " is given twice");
            values.push_back(takeValue(command, *option, split, texts, index));
            while (option->takesAll && !split.hasValue && index + 1 < texts.size() &&
                   !isOptionText(texts[index + 1]))
                values.push_back(takeValue(command, *option, split, texts, index));
        } else {
            if (text.empty()) refuse(command, "a file name is empty");
            arguments.operands_.push_back(text);
        }
    }
    return arguments;
}

std::string helpText(const CommandDef &command) {
    const std::vector<OptionDef> options = allOptions(command);
    std::size_t column = 0;
    for (const OptionDef &option : options)
        column = std::max(column, optionHead(option).size() + 2);
    std::string text = std::string("Usage: eda ") + command.name + " " + command.operands + "\n\n" +
                       command.details + "\nOptions:\n";
    for (const OptionDef &option : options)
        text += optionLines(option, column);
    return text;
}

} // namespace EDATool
