// The import options of one run.
#pragma once

#include "host/EntityModel/Model.h"
#include "readers/EDAReader.h"

#include <memory>
#include <string>
#include <vector>

namespace EDATool {

// A model whose root is an "EDA Import Options" entity: the stored options of the reader's format, with
// changes of the form "Label=value" made to this copy alone, in their order. The stored ones stay as they
// are. Throws UsageFailure for an unknown label or a value that the option does not take, naming what there
// is.
std::unique_ptr<EntityModel::Model> makeImportOptions(EDA::EDAReader &reader,
                                                      const std::vector<std::string> &changes);

} // namespace EDATool
