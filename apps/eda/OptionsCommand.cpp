// eda options: the import options that are stored for a format.
#include "Commands.h"

#include "Console.h"
#include "Entities.h"
#include "Failure.h"
#include "Formats.h"
#include "host/EntityModel/UserPreference.h"
#include "ImportOptions.h"
#include "Printable.h"
#include "Report.h"

#include <algorithm>

namespace EDATool {

using namespace EntityModel;

namespace {

struct OptionState {
    const AttributeDef *definition;
    std::string value;
    std::string standard; // what it is for this format until somebody stores another value
    bool isFixed;         // the format needs this value and no other
};

using Texts = std::vector<std::string>;

// The values of all options, in their order.
Texts valuesOf(const Entity &options) {
    Texts values;
    for (const AttributeDef *definition : importOptions())
        values.push_back(textOf(options, AttributePath(definition->type)));
    return values;
}

void setOption(Entity &options, const AttributeDef &definition, const std::string &value) {
    options.findAttribute(AttributePath(definition.type))->setFromString(value);
}

std::string schemaDefault(const AttributeDef &definition) {
    std::string text;
    return definition.defaultAttribute->getString(text);
}

void resetAll(Entity &options) {
    for (const AttributeDef *definition : importOptions())
        setOption(options, *definition, schemaDefault(*definition));
}

// A format sets the options that it needs each time it is asked, so the values to start from are found by
// asking it for options that were reset; the values of the user come back after that.
std::vector<OptionState> readOptions(EDA::EDAReader &reader) {
    Entity &options = storedImportOptions(reader);
    const Texts stored = valuesOf(options);
    resetAll(options);
    const Texts standards = valuesOf(storedImportOptions(reader));
    std::vector<OptionState> states;
    for (const AttributeDef *definition : importOptions()) {
        const std::size_t index = states.size();
        setOption(options, *definition, stored[index]);
        const bool isFixed = standards[index] != schemaDefault(*definition);
        states.push_back({definition, stored[index], standards[index], isFixed});
    }
    return states;
}

void checkArguments(const Arguments &arguments) {
    const std::size_t count = arguments.operands().size();
    if (count == 0)
        throw UsageFailure("options needs a FORMAT: " + formatNames() + "; see: eda options --help");
    if (count > 1) throw UsageFailure("options takes one FORMAT; see: eda options --help");
}

bool hasChanges(const Arguments &arguments) {
    return arguments.has("--set") || arguments.has("--reset") || arguments.has("--reset-all");
}

// The options that the user's changes are about, after making them in memory. Resets come first, so that one
// command can start afresh.
std::vector<const AttributeDef *> makeChanges(const Arguments &arguments, Entity &options) {
    if (arguments.has("--reset-all")) resetAll(options);
    for (const std::string &label : arguments.values("--reset")) {
        const AttributeDef &definition = findImportOption(label);
        setOption(options, definition, schemaDefault(definition));
    }
    std::vector<const AttributeDef *> changed;
    for (const std::string &change : arguments.values("--set"))
        changed.push_back(&changeImportOption(options, "--set", change));
    return changed;
}

// Nothing is stored until every change was taken.
void storeChanges(const Arguments &arguments, const FormatDef &format, EDA::EDAReader &reader) {
    UserPreference &preferences = UserPreference::instance();
    Entity &options = storedImportOptions(reader);
    if (!preferences.loadError().empty()) {
        throw DesignFailure("nothing was stored, since that would replace a file that cannot be read: " +
                            printable(preferences.loadError()));
    }
    const std::vector<const AttributeDef *> changed = makeChanges(arguments, options);
    const Texts wanted = valuesOf(options);
    const Texts kept = valuesOf(storedImportOptions(reader));
    const std::vector<const AttributeDef *> all = importOptions();
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (wanted[index] == kept[index] || std::count(changed.begin(), changed.end(), all[index]) == 0)
            continue;
        throw UsageFailure("the import option " + inQuotes(all[index]->type.getLabel()) + " is always " +
                           kept[index] + " for " + format.name);
    }
    std::string error;
    if (!preferences.save(error)) throw DesignFailure("nothing was stored: " + printable(error));
}

std::string remark(const OptionState &state, const FormatDef &format) {
    if (state.isFixed) return std::string(" (always ") + state.standard + " for " + format.name + ")";
    return state.value == state.standard ? std::string() : " (default: " + state.standard + ")";
}

std::string optionTable(const std::vector<OptionState> &states, const FormatDef &format) {
    std::size_t width = 0;
    for (const OptionState &state : states)
        width = std::max(width, countCharacters(state.value) + 2);
    std::vector<TableRow> rows;
    for (const OptionState &state : states) {
        rows.push_back({"  " + state.definition->type.getLabel(),
                        state.value + std::string(width - countCharacters(state.value), ' ') +
                            allowedValues(*state.definition, false) + remark(state, format)});
    }
    return tableText(rows);
}

void addOption(JsonReport &report, const OptionState &state) {
    const AttributeDef &definition = *state.definition;
    report.beginObject(nullptr);
    report.addText("label", definition.type.getLabel());
    report.addText("value", state.value);
    report.addText("default", state.standard);
    report.addText("kind", kindOfOption(definition));
    report.addFlag("fixed", state.isFixed);
    std::vector<std::string> choices;
    for (const Type &choice : definition.choices)
        choices.push_back(choice.getLabel());
    if (definition.kind == AttributeKind::YesNo) choices = {"Yes", "No"};
    if (!choices.empty()) report.addTexts("choices", choices);
    if (definition.kind == AttributeKind::Number) {
        report.addTexts("units", Units::spellings(*definition.quantity));
        report.addFlag("mayBeNegative", !definition.nonNegative);
    }
    report.endObject();
}

void printOptions(const Arguments &arguments, const FormatDef &format,
                  const std::vector<OptionState> &states) {
    if (arguments.has("--json")) {
        JsonReport report;
        report.addText("format", format.name);
        report.addText("file", UserPreference::fileName());
        report.beginArray("options");
        for (const OptionState &state : states)
            addOption(report, state);
        report.endArray();
        print(report.finish());
        return;
    }
    print(std::string("Import options of ") + format.name + ":\n" + optionTable(states, format));
    if (hasChanges(arguments)) print("Stored in " + shortened(UserPreference::fileName(), 300) + "\n");
}

int run(const Arguments &arguments) {
    checkArguments(arguments);
    const FormatDef &format = findFormat(arguments.operands().front());
    const std::unique_ptr<EDA::EDAReader> reader = format.makeReader();
    if (hasChanges(arguments)) storeChanges(arguments, format, *reader);
    const std::vector<OptionState> states = readOptions(*reader);
    if (!preferencesTrouble().empty()) printWarning(preferencesTrouble());
    printOptions(arguments, format, states);
    return static_cast<int>(Status::Done);
}

} // namespace

CommandDef optionsCommand() {
    return {
        "options",
        "FORMAT",
        "Shows and stores the import options of a format",
        "Lists the import options that are stored for a format, for instance IDF: label, value and what "
        "each\n"
        "takes. eda import uses them. Changes are stored for all imports to come, either all of them or,\n"
        "when one cannot be made, none. A change for one import is given to eda import with --option.\n",
        {{"--set", 0, "\"Label=value\"", true,
          "Stores a value, for example \"Import Via Keepouts=No\"\nor \"Min Height=2 mm\"."},
         {"--reset", 0, "\"Label\"", true, "Stores the default of an option. Done before --set."},
         {"--reset-all", 0, nullptr, false, "Stores the defaults of all options. Done first."},
         {"--json", 0, nullptr, false, "Prints one JSON object for programs."}},
        run};
}

} // namespace EDATool
