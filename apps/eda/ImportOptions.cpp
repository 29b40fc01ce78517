// The import options of one run.
#include "ImportOptions.h"

#include "Entities.h"
#include "Failure.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Types.h"
#include "Printable.h"
#include "text/Text.h"

namespace EDATool {

using namespace EntityModel;

namespace {

bool isOption(const AttributeDef &definition) {
    const bool hasValue = definition.kind == AttributeKind::YesNo ||
                          definition.kind == AttributeKind::Choice ||
                          definition.kind == AttributeKind::Number;
    return hasValue && definition.type != Name_t;
}

std::vector<const AttributeDef *> optionDefinitions() {
    std::vector<const AttributeDef *> options;
    for (const auto &definition : Schema::instance().find(EDA_Import_Options_t)->attributes()) {
        if (isOption(*definition)) options.push_back(definition.get());
    }
    return options;
}

const AttributeDef &findOption(const std::string &label) {
    std::string labels;
    for (const AttributeDef *definition : optionDefinitions()) {
        if (EDA::equalsIgnoreCase(definition->type.getLabel(), label)) return *definition;
        labels += "\n  " + definition->type.getLabel();
    }
    throw UsageFailure("there is no import option " + inQuotes(label) + "; the options are:" + labels);
}

std::string allowedValues(const AttributeDef &definition) {
    if (definition.kind == AttributeKind::YesNo) return "Yes, No";
    if (definition.kind == AttributeKind::Number) {
        const std::string unit =
            definition.displayUnit != nullptr ? definition.displayUnit->label : std::string();
        return std::string(definition.nonNegative ? "a number from 0 up" : "a number") +
               " with a unit, such as 2 " + unit;
    }
    std::string list;
    for (const Type &choice : definition.choices)
        list += (list.empty() ? "" : ", ") + choice.getLabel();
    return list;
}

void copyStoredOptions(const Entity &stored, Entity &options) {
    for (const AttributeDef *definition : optionDefinitions()) {
        EntityEditor::setValue(&options, AttributePath(definition->type),
                               textOf(stored, AttributePath(definition->type)));
    }
}

void applyChange(Entity &options, const std::string &change) {
    const std::size_t equals = change.find('=');
    if (equals == std::string::npos) {
        throw UsageFailure("--option " + inQuotes(change) + " has not the form \"Label=value\"");
    }
    const AttributeDef &definition = findOption(change.substr(0, equals));
    const std::string value = change.substr(equals + 1);
    if (!EntityEditor::setValue(&options, AttributePath(definition.type), value)) {
        throw UsageFailure("the import option " + inQuotes(definition.type.getLabel()) + " does not take " +
                           inQuotes(value) + "; it takes: " + allowedValues(definition));
    }
}

} // namespace

std::unique_ptr<Model> makeImportOptions(EDA::EDAReader &reader, const std::vector<std::string> &changes) {
    auto options = std::make_unique<Model>(EDA_Import_Options_t);
    if (const Entity *stored = reader.getOptions()) copyStoredOptions(*stored, *options->root());
    for (const std::string &change : changes)
        applyChange(*options->root(), change);
    return options;
}

} // namespace EDATool
