// The import options, stored and of one run.
#include "ImportOptions.h"

#include "Entities.h"
#include "Failure.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/UserPreference.h"
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

std::string numberText(const AttributeDef &definition, bool inFull) {
    const std::string text =
        std::string(definition.nonNegative ? "a number from 0 up" : "a number") + " with a unit";
    if (definition.displayUnit == nullptr) return text;
    if (!inFull) return text + ", such as 2 " + definition.displayUnit->label;
    std::string list;
    for (const std::string &spelling : Units::spellings(*definition.quantity))
        list += (list.empty() ? "" : ", ") + spelling;
    return text + ": " + list;
}

} // namespace

std::vector<const AttributeDef *> importOptions() {
    std::vector<const AttributeDef *> options;
    for (const auto &definition : Schema::instance().find(EDA_Import_Options_t)->attributes()) {
        if (isOption(*definition)) options.push_back(definition.get());
    }
    return options;
}

const AttributeDef &findImportOption(const std::string &label) {
    std::string labels;
    for (const AttributeDef *definition : importOptions()) {
        if (EDA::equalsIgnoreCase(definition->type.getLabel(), label)) return *definition;
        labels += "\n  " + definition->type.getLabel();
    }
    throw UsageFailure("there is no import option " + inQuotes(label) + "; the options are:" + labels);
}

std::string kindOfOption(const AttributeDef &definition) {
    if (definition.kind == AttributeKind::YesNo) return "yes-no";
    if (definition.kind == AttributeKind::Choice) return "choice";
    std::string kind = definition.quantity->label;
    for (char &letter : kind) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return kind;
}

std::string allowedValues(const AttributeDef &definition, bool inFull) {
    if (definition.kind == AttributeKind::YesNo) return "Yes, No";
    if (definition.kind == AttributeKind::Number) return numberText(definition, inFull);
    std::string list;
    for (const Type &choice : definition.choices)
        list += (list.empty() ? "" : ", ") + choice.getLabel();
    return list;
}

const AttributeDef &changeImportOption(Entity &options, const std::string &argument,
                                       const std::string &change) {
    const std::size_t equals = change.find('=');
    if (equals == std::string::npos) {
        throw UsageFailure(argument + " " + inQuotes(change) + " has not the form \"Label=value\"");
    }
    const AttributeDef &definition = findImportOption(change.substr(0, equals));
    const std::string value = change.substr(equals + 1);
    Attribute *const option = options.findAttribute(AttributePath(definition.type));
    if (option == nullptr || !option->setFromString(value)) {
        throw UsageFailure("the import option " + inQuotes(definition.type.getLabel()) + " does not take " +
                           inQuotes(value) + "; it takes: " + allowedValues(definition, true));
    }
    return definition;
}

Entity &storedImportOptions(EDA::EDAReader &reader) {
    Entity *const stored = reader.getOptions();
    if (stored == nullptr) throw DesignFailure("the format keeps no import options");
    return *stored;
}

std::string preferencesTrouble() {
    const std::string &error = UserPreference::instance().loadError();
    return error.empty()
               ? error
               : "the stored options cannot be read, so the defaults stand in for them: " + printable(error);
}

std::unique_ptr<Model> makeImportOptions(EDA::EDAReader &reader, const std::vector<std::string> &changes) {
    auto options = std::make_unique<Model>(EDA_Import_Options_t);
    const Entity &stored = storedImportOptions(reader);
    for (const AttributeDef *definition : importOptions()) {
        const AttributePath path(definition->type);
        options->root()->findAttribute(path)->setFromString(textOf(stored, path));
    }
    for (const std::string &change : changes)
        changeImportOption(*options->root(), "--option", change);
    return options;
}

} // namespace EDATool
