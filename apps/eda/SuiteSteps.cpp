// Listing and choosing the steps of a design.
#include "SuiteSteps.h"

#include "Failure.h"
#include "Files.h"
#include "Formats.h"
#include "host/FileSystem/Path.h"
#include "host/FileSystem/ZipArchive.h"
#include "host/QvDbWrap/IpcDocument.h"
#include "host/Tools/Terminal.h"
#include "Printable.h"

#include <algorithm>
#include <charconv>
#include <iostream>
#include <iterator>
#include <set>

namespace EDATool {

namespace {

constexpr std::size_t nameLimit = 100;
constexpr std::size_t listLimit = 20; // names in a message

// The token behind the first "steps" of an entry's name; empty for none.
std::string stepOf(const std::string &entry) {
    const std::vector<std::string> tokens = FileSystem::Path::getTokens(entry);
    const auto marker = std::find(tokens.begin(), tokens.end(), "steps");
    return marker != tokens.end() && marker + 1 != tokens.end() ? marker[1] : std::string();
}

std::vector<std::string> stepsOfArchive(const std::string &file) {
    const FileSystem::ZipArchive archive(file);
    std::vector<std::string> steps;
    std::set<std::string> known;
    for (const std::string &entry : archive.allEntries(false, true)) {
        const std::string step = stepOf(entry);
        if (!step.empty() && known.insert(step).second) steps.push_back(step);
    }
    if (!archive.getError().empty()) throw DesignFailure(printable(archive.getError()));
    return steps;
}

std::vector<std::string> stepsOf(const std::string &file, bool isOfArchive) {
    if (isOfArchive) return stepsOfArchive(file);
    try {
        return QvDbWrap::stepsOfIpcDocument(file);
    } catch (const std::runtime_error &error) {
        throw DesignFailure(inQuotes(file) + ": " + printable(error.what()));
    }
}

std::string listText(const std::vector<std::string> &steps) {
    std::string text;
    for (std::size_t index = 0; index < std::min(steps.size(), listLimit); ++index)
        text += (index > 0 ? ", '" : "'") + shortened(steps[index], nameLimit) + "'";
    return steps.size() > listLimit ? text + " and " + std::to_string(steps.size() - listLimit) + " more"
                                    : text;
}

std::string namedStep(const std::string &file, const std::string &name, bool isOfArchive) {
    const std::vector<std::string> steps = stepsOf(file, isOfArchive);
    if (std::find(steps.begin(), steps.end(), name) != steps.end()) return name;
    throw UsageFailure(inQuotes(file) + " has no step " + inQuotes(name) +
                       (steps.empty() ? "; it has none at all" : "; its steps are: " + listText(steps)));
}

std::string askedStep(const std::vector<std::string> &steps) {
    TerminalStepChooser chooser(std::cin, std::cout);
    const std::optional<int> index = chooser.chooseStep(steps);
    if (!index) throw Failure(Status::Cancelled, "cancelled: no step was chosen");
    return steps[static_cast<std::size_t>(*index)];
}

// The index of a line's number or name; nothing for anything else.
std::optional<int> indexOf(const std::string &line, const std::vector<std::string> &steps) {
    const auto named = std::find(steps.begin(), steps.end(), line);
    if (named != steps.end()) return static_cast<int>(named - steps.begin());
    int number = 0;
    const auto read = std::from_chars(line.data(), line.data() + line.size(), number);
    const bool isNumber = read.ec == std::errc() && read.ptr == line.data() + line.size();
    if (!isNumber || number < 1 || static_cast<std::size_t>(number) > steps.size()) return std::nullopt;
    return number - 1;
}

} // namespace

bool isArchive(const std::string &file) {
    static const char *const extensions[] = {".zip", ".tgz", ".gz", ".z", ".tar", ".7z"};
    return std::find(std::begin(extensions), std::end(extensions), lowerExtension(file)) !=
           std::end(extensions);
}

std::optional<int> TerminalStepChooser::chooseStep(const std::vector<std::string> &steps) {
    output_ << "The design has " << steps.size() << " steps:\n";
    for (std::size_t index = 0; index < steps.size(); ++index)
        output_ << "  " << index + 1 << "  " << shortened(steps[index], nameLimit) << '\n';
    for (;;) {
        output_ << "Which one is to be read? " << std::flush;
        std::string line;
        if (!std::getline(input_, line)) return std::nullopt;
        const std::size_t start = line.find_first_not_of(" \t\r");
        if (start == std::string::npos) return std::nullopt;
        line = line.substr(start, line.find_last_not_of(" \t\r") - start + 1);
        if (const std::optional<int> index = indexOf(line, steps)) return index;
        output_ << "There is no such step; an empty line cancels.\n";
    }
}

std::string chosenStep(const std::string &file, const DesignSettings &settings, Design &design) {
    const bool isOfArchive = design.format == archiveFormat;
    if (!settings.step.empty()) return namedStep(file, settings.step, isOfArchive);
    if (!isOfArchive) return std::string();
    std::vector<std::string> steps = stepsOfArchive(file);
    if (steps.size() < 2) return std::string();
    if (Tools::Terminal::canAsk()) return askedStep(steps);
    std::sort(steps.begin(), steps.end());
    const std::string first = steps.front();
    steps.erase(steps.begin());
    design.warnings.push_back(inQuotes(file) + ": the step '" + shortened(first, nameLimit) +
                              "' is read; --step can name another: " + listText(steps));
    return first;
}

} // namespace EDATool
