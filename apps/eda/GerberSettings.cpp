// The options of commands that read Gerber sets.
#include "GerberSettings.h"

#include "Failure.h"
#include "Printable.h"
#include "readers/BoardUnits.h"
#include "text/Text.h"

#include <algorithm>
#include <cmath>

namespace EDATool {

namespace {

const OptionDef gerberOptions[] = {
    {"--step", 0, "NAME", false,
     "The step, that is the board or panel, of an IPC-2581 document or an\narchive that has several."},
    {"--option", 0, "\"Label=value\"", true,
     "Sets an import option that the reading of Gerber files uses, for\nexample \"Merge Conductors=No\"."},
    {"--layer-order", 0, "A,B,...", false,
     "Of Gerber files: the copper layers from top to bottom, by file,\nwhatever the files say. Files not "
     "named are no layers."},
    {"--span", 0, "FILE=FROM:TO", true,
     "Of Gerber sets: the layers, by name or number, where the holes of a\ndrill file start and end. "
     "Default: the first and the last."},
    {"--drill-format", 0, "I.D", false,
     "Digits before and after the point in drill files that do not say them.\nDefault: found out, and told."},
    {"--profile", 0, "FILE", false, "Of a set: the file that draws the board's edge. Default: found out."},
    {"--board", 0, "NAME", false,
     "Of a set with files of several boards: which one. Default: the one\nwith the most files."},
    {"--as-is", 0, nullptr, false,
     "Reads Gerber files literally, without the front end that takes what\nreal sets are written in."},
    {"--copper", 0, "FILE...", true,
     "Puts the copper and the drills of these Gerber files, all names up to\nthe next option, onto the "
     "board of the design, in its units.",
     true},
    {"--copper-offset", 0, "X,Y", false, "Where the origin of that copper goes on the board, in its units."},
    {"--copper-units", 0, "UNIT", false,
     "What the numbers of that copper are in, where its files are wrong."},
    {"--stackup", 0, "FILE", false,
     "Gives the layers thickness, place and materials, with the dielectrics\nbetween them, from a JSON "
     "file."},
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

// "X,Y"
void parseOffset(const std::string &text, DesignSettings &settings) {
    const std::size_t comma = text.find(',');
    const auto parse = [&text](const std::string &part) {
        const double value = EDA::parseDouble(part, NAN, NAN);
        if (part.find_first_not_of("0123456789.+-eE") != std::string::npos || !std::isfinite(value))
            throw UsageFailure("--copper-offset " + inQuotes(text) + " has not the form X,Y");
        return value;
    };
    settings.copperX = parse(text.substr(0, comma));
    settings.copperY = parse(comma == std::string::npos ? std::string("?") : text.substr(comma + 1));
}

void readCopperSettings(const Arguments &arguments, DesignSettings &settings) {
    settings.copper = arguments.values("--copper");
    settings.copperUnits = arguments.value("--copper-units");
    for (const char *option : {"--copper-offset", "--copper-units"}) {
        if (arguments.has(option) && settings.copper.empty())
            throw UsageFailure(std::string(option) + " is for what --copper names");
    }
    if (arguments.has("--copper-units") && !EDA::isKnownLengthUnit(settings.copperUnits))
        throw UsageFailure("--copper-units " + inQuotes(settings.copperUnits) + " is no unit of length");
    if (arguments.has("--copper-offset")) parseOffset(arguments.value("--copper-offset"), settings);
}

} // namespace

std::vector<OptionDef> withGerberOptions(std::vector<OptionDef> options) {
    const std::vector<OptionDef> own = options;
    for (const OptionDef &option : gerberOptions) {
        const bool isKnown = std::any_of(own.begin(), own.end(), [&option](const OptionDef &each) {
            return std::string(each.name) == option.name;
        });
        if (!isKnown) options.push_back(option);
    }
    return options;
}

DesignSettings designSettings(const Arguments &arguments) {
    DesignSettings settings;
    settings.options = arguments.values("--option");
    settings.importAs = arguments.value("--as");
    if (!settings.importAs.empty() && settings.importAs != "PCB" && settings.importAs != "Component")
        throw UsageFailure("--as " + inQuotes(settings.importAs) + " is unknown; it takes PCB or Component");
    settings.layerOrder = splitList(arguments.value("--layer-order"));
    settings.spans = arguments.values("--span");
    settings.drillFormat = arguments.value("--drill-format");
    settings.profile = arguments.value("--profile");
    // With --into it is a board of the model.
    if (!arguments.has("--into")) settings.board = arguments.value("--board");
    settings.asIs = arguments.has("--as-is");
    if (settings.asIs && !(settings.profile.empty() && settings.board.empty()))
        throw UsageFailure("--profile and --board are for sets that are not read --as-is");
    settings.stackup = arguments.value("--stackup");
    settings.step = arguments.value("--step");
    readCopperSettings(arguments, settings);
    return settings;
}

} // namespace EDATool
