// The import options: which there are, what each takes, those that are stored and those of one run.
#pragma once

#include "host/EntityModel/Model.h"
#include "readers/EDAReader.h"

#include <memory>
#include <string>
#include <vector>

namespace EDATool {

// The options that have a value, in the order of the schema.
std::vector<const EntityModel::AttributeDef *> importOptions();

// The option of this label, in any case. Throws UsageFailure naming all labels.
const EntityModel::AttributeDef &findImportOption(const std::string &label);

// "yes-no", "choice", "length", "power": what kind of value an option takes.
std::string kindOfOption(const EntityModel::AttributeDef &definition);

// What an option takes, in words: its choices, or a number with an example or, in full, with all units.
std::string allowedValues(const EntityModel::AttributeDef &definition, bool inFull);

// Makes a change of the form "Label=value" and gives the option that was changed. Throws UsageFailure for
// another form, an unknown label, or a value that the option does not take, naming what there is; `argument`
// is the name of the command line option that it came with.
const EntityModel::AttributeDef &changeImportOption(EntityModel::Entity &options, const std::string &argument,
                                                    const std::string &change);

// The stored options of the reader's format, which belong to the host. Throws DesignFailure for a format that
// keeps none.
EntityModel::Entity &storedImportOptions(EDA::EDAReader &reader);

// Why the stored options could not be read, so that the defaults stand in for them; empty when they could.
// To be asked once they were used.
std::string preferencesTrouble();

// A model whose root is an "EDA Import Options" entity: the stored options of the reader's format, with
// changes of the form "Label=value" of --option made to this copy alone, in their order. The stored ones stay
// as they are. Throws as changeImportOption does.
std::unique_ptr<EntityModel::Model> makeImportOptions(EDA::EDAReader &reader,
                                                      const std::vector<std::string> &changes);

} // namespace EDATool
