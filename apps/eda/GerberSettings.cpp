// The options of commands that read Gerber sets.
#include "GerberSettings.h"

#include <algorithm>

namespace EDATool {

namespace {

const OptionDef gerberOptions[] = {
    {"--option", 0, "\"Label=value\"", true,
     "Sets an import option that the reading of Gerber files uses, for\nexample \"Merge Conductors=No\"."},
    {"--layer-order", 0, "A,B,...", false,
     "Of Gerber files: the copper layers from top to bottom, by file.\nFiles not named are no layers."},
    {"--span", 0, "FILE=FROM:TO", true,
     "Of Gerber sets: the layers, by name or number, where the holes of a\ndrill file start and end. "
     "Default: the first and the last."},
    {"--drill-format", 0, "I.D", false,
     "Digits before and after the point in drill files. Default: as in the\nfirst layer file, else 2.4."},
};

std::vector<std::string> splitList(const std::string &text) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        if (end > begin) parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

} // namespace

std::vector<OptionDef> withGerberOptions(std::vector<OptionDef> options) {
    const bool hasOption = std::any_of(options.begin(), options.end(), [](const OptionDef &option) {
        return std::string(option.name) == "--option";
    });
    for (const OptionDef &option : gerberOptions) {
        if (!hasOption || std::string(option.name) != "--option") options.push_back(option);
    }
    return options;
}

DesignSettings designSettings(const Arguments &arguments) {
    DesignSettings settings;
    settings.options = arguments.values("--option");
    settings.layerOrder = splitList(arguments.value("--layer-order"));
    settings.spans = arguments.values("--span");
    settings.drillFormat = arguments.value("--drill-format");
    return settings;
}

} // namespace EDATool
